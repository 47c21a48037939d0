#include "output/saving.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/floating_windows.h"
#include "core/general.h"
#include "core/platform.h"
#include "core/records.h"
#include "core/save_file.h"

#include <algorithm>
#include <filesystem>

namespace quorvanta {

namespace {

// A caption without ".dim"; any other point is part of the name ("Phase 2.5").
std::string WithoutExtension(const std::string& caption) {
    const std::string extension = std::string(".") + AnalysisExtension;
    const bool isFile = caption.size() > extension.size() &&
                        std::equal(extension.rbegin(), extension.rend(), caption.rbegin(),
                                   [](char a, char b) { return a == LowerCase(b); });
    return isFile ? caption.substr(0, caption.size() - extension.size()) : caption;
}

} // namespace

std::string ChildKindName() {
    switch (CurrentWindowKind()) {
    case TableWindow:
        return "Table";
    case GraphWindow:
        return "Graph";
    case SimulationWindow:
        return "Monte Carlo";
    default:
        return "Calculation";
    }
}

std::string WindowKindName() {
    for (const FloatingRow& row : FloatingWindows())
        if (!row.Name.empty() && ThePlatform().IsShown(row.Window))
            return std::string(row.Name);
    return ChildKindName();
}

std::string AskFileName(std::span<const FileForm> forms, const std::string& what) {
    FileDialog dialog;
    dialog.DefaultExtension = forms.front().Extension;
    dialog.Title = "Save " + what;
    for (const FileForm& form : forms) {
        const std::string mask = "*." + std::string(form.Extension);
        dialog.Filter +=
            (dialog.Filter.empty() ? "" : "|") + std::string(form.Name) + " (" + mask + ")|" + mask;
    }
    const std::filesystem::path own = AnalysisNo > 0 ? AnalysisState(AnalysisNo).Path : "";
    if (own.empty()) {
        dialog.FileName = WithoutExtension(AnalysisFileName);
        std::erase(dialog.FileName, ' ');
    } else {
        dialog.FileName = WithoutExtension(own.filename().string());
        dialog.Folder = own.parent_path().string();
    }
    return ThePlatform().AskSaveName(dialog).value_or("");
}

std::string ExtensionOf(const std::string& path) {
    const std::string extension = std::filesystem::path(path).extension().string();
    std::string letters;
    for (const char c : extension)
        letters += LowerCase(c);
    return letters.empty() ? "" : letters.substr(1);
}

bool WriteTextFile(const std::string& path, const std::string& text) {
    const bool isSaved = !text.empty() && SaveFile(path, text);
    ThePlatform().ShowStatus(
        isSaved ? "" : "The Output Can't Be Saved. The File " + path + " Can't Be Written.");
    return isSaved;
}

} // namespace quorvanta
