#include "output/saving.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/floating_windows.h"
#include "core/general.h"
#include "core/platform.h"
#include "core/program_name.h"
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

std::string AskFileName(const std::string& extension) {
    FileDialog dialog;
    dialog.Title = "Save " + WindowKindName();
    dialog.DefaultExtension = extension;
    if (extension == AnalysisExtension) {
        dialog.Title = "Save " + ChildKindName();
        dialog.Filter = std::string(ProgramName) + " Files (*.dim)|*.dim";
    } else if (extension == "bmp") {
        dialog.Filter = "Graph Files (*.bmp)|*.bmp";
    } else {
        dialog.Filter = "Text Files (*.rtf)|*.rtf";
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

bool WriteTextFile(const std::string& path, const std::string& text) {
    const bool isSaved = SaveFile(path, text);
    ThePlatform().ShowStatus(
        isSaved ? "" : "The Output Can't Be Saved. The File " + path + " Can't Be Written.");
    return isSaved;
}

} // namespace quorvanta
