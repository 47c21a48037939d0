#include "output/printcopy.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "core/records.h"
#include "core/showpar.h"
#include "core/values.h"
#include "output/distrplot.h"
#include "output/document.h"
#include "output/saving.h"
#include "output/statement.h"
#include "output/xyzplot.h"

namespace quorvanta {

namespace {

PictureFormat FormatOf(const std::string& path) {
    const std::string extension = ExtensionOf(path);
    if (extension == "png")
        return PictureFormat::Png;
    if (extension == "svg")
        return PictureFormat::Svg;
    return extension == "pdf" ? PictureFormat::Pdf : PictureFormat::Bitmap;
}

PictureNotes NotesOf(const Presentation& graph) {
    return {OneLine(graph.Title), StatementText()};
}

// The picture of a graph; false if it was given up or could not be saved.
bool GiveOutPicture(OutputAction action, const Presentation& graph,
                    const std::string& name = WindowKindName()) {
    const auto draw = [graph](Surface& surface) { PlotGraph(surface, graph); };
    switch (action) {
    case OutputAction::Print:
        ThePlatform().Print(OutputForm::Picture,
                            [graph, statement = StatementText()](Surface& surface) {
                                DrawGraphPage(surface, graph, statement);
                            });
        return true;
    case OutputAction::Copy:
        ThePlatform().CopyPicture(draw);
        return true;
    case OutputAction::Save:
        break;
    }
    const std::string path = AskFileName(PictureForms, name);
    return !path.empty() &&
           WriteTextFile(path, ThePlatform().PictureFile(FormatOf(path), draw, NotesOf(graph)));
}

std::string FileText(const std::string& path, const OutputDocument& document) {
    const std::string extension = ExtensionOf(path);
    if (extension == "html")
        return HtmlOf(document);
    return extension == "csv" ? CsvOf(document) : RtfOf(document);
}

bool GiveOutText(OutputAction action, const OutputDocument& document) {
    switch (action) {
    case OutputAction::Print:
        ThePlatform().Print(OutputForm::Text,
                            [document](Surface& surface) { DrawDocument(surface, document); });
        return true;
    case OutputAction::Copy:
        ThePlatform().CopyText(PlainText(document), RtfOf(document), HtmlOf(document));
        return true;
    case OutputAction::Save:
        break;
    }
    const std::string path = AskFileName(
        document.Table.Blocks.empty() ? TextForms : std::span(TableForms), WindowKindName());
    return !path.empty() && WriteTextFile(path, FileText(path, document));
}

bool GiveOut(OutputAction action) {
    if (!HasOutput())
        return false;
    if (ThePlatform().IsShown(FloatingWindow::Summary))
        return GiveOutText(action, StatementDocument());
    if (ThePlatform().IsShown(FloatingWindow::DistrGraph))
        return GiveOutPicture(action, DistrGraph());
    if (IsTableOrGraph() && !EnsureRun())
        return false;
    if (CurrentWindowKind() == GraphWindow) {
        const auto form = ThePlatform().AskOutputForm(action);
        if (!form)
            return false;
        if (*form == OutputForm::Picture)
            return GiveOutPicture(action, PresentationOf(AnalysisNo));
    }
    if (action == OutputAction::Print) {
        ThePlatform().Show(FloatingWindow::Output);
        return true;
    }
    return GiveOutText(action, ResultDocument());
}

} // namespace

bool HasOutput() {
    if (AnalysisNo == 0 || NoOfPar < 1)
        return false;
    return IsTableOrGraph() || (Calculated == True && HasValue(ParText(ParKind(UnknownParNo))));
}

void OutputCommand(OutputAction action) {
    Cancelled = False;
    if (!GiveOut(action))
        Cancelled = True;
}

void TellCopied() {
    ThePlatform().MsgBox(
        WindowKindName() + " Has Been Copied To the Clipboard for Pasting Into Other Applications",
        Buttons::Ok, Icon::Exclamation, "Copy");
}

void OutputDistrGraph(OutputAction action) {
    if (HasOutput() && GiveOutPicture(action, DistrGraph()) && action == OutputAction::Copy)
        TellCopied();
}

void OutputPicture(OutputAction action, const Presentation& picture, const std::string& name) {
    if (picture.HasResult())
        GiveOutPicture(action, picture, name);
}

void OutputResult(OutputAction action) {
    const bool isGiven = HasOutput() && GiveOutText(action, ResultDocument());
    if (isGiven && action == OutputAction::Copy)
        TellCopied();
    Cancelled = False;
}

} // namespace quorvanta
