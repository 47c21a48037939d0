// Where an analysis or an output is saved to.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace quorvanta {

// The extension of analysis files.
inline constexpr const char* AnalysisExtension = "dim";

// What the window in front is called in messages: "Summary", "Distribution Graph", "Calculation",
// "Table", "Graph" or "Monte Carlo". A free-standing window lies in front of the child windows.
std::string WindowKindName();

// The same name for the child window alone.
std::string ChildKindName();

// A form of what is saved: as the file dialog calls it, and the extension of its files.
struct FileForm {
    std::string_view Name;
    std::string_view Extension;
};

inline constexpr FileForm AnalysisForms[] = {{"Quorvanta Files", AnalysisExtension}};
inline constexpr FileForm PictureForms[] = {{"Graph Files", "bmp"},
                                            {"PNG Pictures", "png"},
                                            {"SVG Drawings", "svg"},
                                            {"PDF Documents", "pdf"}};
inline constexpr FileForm TableForms[] = {
    {"Text Files", "rtf"}, {"Web Pages", "html"}, {"CSV Tables", "csv"}};
// Of a text without a table: all but the last.
inline constexpr std::span<const FileForm> TextForms(TableForms, std::size(TableForms) - 1);

// Asks for the name of a file to save to in one of the forms, the first unless the user chooses
// another; the dialog says what is saved. An analysis with a file proposes the name and the folder
// of that; any other its caption without blanks. Empty when the user gives up.
std::string AskFileName(std::span<const FileForm> forms, const std::string& what);

// The extension of a file in small letters, without its point; empty if it has none.
std::string ExtensionOf(const std::string& path);

// Writes the bytes of an output, a text or a picture, to a file in place of what it held. False,
// told in the status line, if that fails or if there are no bytes; a file that exists is then as it
// was.
bool WriteTextFile(const std::string& path, const std::string& text);

} // namespace quorvanta
