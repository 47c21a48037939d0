#include "generator/examplepage.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/general.h"
#include "generator/example.h"
#include "generator/markdown.h"
#include "output/format.h"

#include <algorithm>
#include <stdexcept>

namespace quorvanta::help {

namespace {

using Rows = std::vector<std::pair<std::string, std::string>>;

std::string TableHtml(const Rows& rows) {
    std::string html = "<table border=\"1\" cellspacing=\"0\" cellpadding=\"4\">\n";
    for (const auto& [name, value] : rows)
        html += "<tr><td>" + Escape(name) + "</td><td><b>" + Escape(value) + "</b></td></tr>\n";
    return html + "</table>\n";
}

bool IsChoice(const FixedArray<bool, 1, 3>& offered) {
    return offered(1) + offered(2) + offered(3) > 1;
}

// What the option window shows, with the choices of the example.
Rows OptionRows() {
    Rows rows;
    if (IsTest == False) {
        rows.emplace_back("Procedure", ProcedureCaption(ProcedureNo));
        rows.emplace_back("Parameter", DistrParList(DistrNo)[static_cast<std::size_t>(ParListNo)]);
    }
    if (SamplesShown && IsChoice(SamplesOffered))
        rows.emplace_back("No Of Samples", SamplesCaption(NoOfSamples));
    if (TailsShown && IsChoice(TailsOffered))
        rows.emplace_back("No Of Tails", TailsCaption(NoOfTails));
    const auto addTick = [&rows](const std::string& caption, bool ticked) {
        rows.emplace_back(caption, ticked ? "ticked" : "not ticked");
    };
    if (TailsShown && LeftTailOffered)
        addTick("Reject in Left Tail", LeftTail == True);
    for (i16 i = 0; i < NoOfCheck; ++i)
        if (CheckEnabled(i))
            addTick(StripAmpersand(CheckLabel(CheckList(i))), CheckValue(CheckList(i)) == 1);
    for (i16 i = 0; i < NoOfIntPar; ++i) {
        const i16 group = IntParList(i);
        const std::string caption = StripAmpersand(IntParCaption(group));
        rows.emplace_back("Interchangeable Parameters" + (caption.empty() ? "" : ", " + caption),
                          StripAmpersand(IntParOption(IntParValue(group), group)));
    }
    return rows;
}

// Which values the first step leaves to chance.
void RequireAllTyped(const ExampleStep& step) {
    for (i16 i = 0; i <= NoOfPar; ++i) {
        const std::string label = StripAmpersand(ParLabel(ParKind(i)));
        const bool typed = std::ranges::any_of(
            step.Typed, [&label](const auto& value) { return value.first == label; });
        if (!typed && label != step.Pressed)
            throw std::runtime_error("example: no value for " + label);
    }
}

std::string StepHtml(const ExampleStep& step) {
    std::string html;
    for (const auto& [label, text] : step.Typed)
        PositionOfLabel(label);
    const i16 kind = ParKind(PositionOfLabel(step.Pressed));
    if (!step.Typed.empty())
        html += "<li>Type these values:\n" + TableHtml(step.Typed) + "</li>\n";
    html += "<li>Press the label <b>" + Escape(step.Pressed) + "</b> and read <b>" +
            Escape(step.Shown) + "</b> in its box. The exact value is " + Escape(step.Exact) +
            (IsCountKind(kind) ? ", which is rounded up.</li>\n" : ".</li>\n");
    return html;
}

// "2" stands for what the second step reads, "2:3" for the same with three decimals.
std::string Result(const std::string& wanted, const std::vector<ExampleStep>& steps) {
    const std::size_t colon = wanted.find(':');
    const std::string& shown = steps.at(std::stoul(wanted) - 1).Shown;
    if (colon == std::string::npos)
        return shown;
    return Format(std::stod(shown), "0." + std::string(std::stoul(wanted.substr(colon + 1)), '0'));
}

} // namespace

std::string ExampleHtml(const std::string& lines, i32 number) {
    const Example example = ParseExample(lines);
    ChooseOptions(example);
    if (HelpExample() != number)
        throw std::runtime_error("example: its analysis has the number " +
                                 std::to_string(HelpExample()));
    std::string menus;
    for (const std::string& caption : example.Menus)
        menus += (menus.empty() ? "" : " › ") + Escape(caption);
    std::string html = "<ol>\n<li>Choose the menu <b>" + menus +
                       "</b>. If no window is open, the program asks for one: take <b>New "
                       "Calculation</b> and press <b>Continue</b>.</li>\n";
    html +=
        "<li>Choose these options, then press <b>OK</b>:\n" + TableHtml(OptionRows()) + "</li>\n";
    SelSetParList();
    RequireAllTyped(example.Steps.front());
    for (const ExampleStep& step : example.Steps)
        html += StepHtml(step);
    return html + "</ol>\n<p>Source: " + Escape(example.Source) + "</p>\n";
}

std::string WithResults(const std::string& topicText) {
    const Example example = ExampleOf(topicText);
    std::string text;
    std::size_t done = 0;
    const std::string begin = "{result ";
    for (std::size_t at = topicText.find(begin); at != std::string::npos;
         at = topicText.find(begin, done)) {
        text += topicText.substr(done, at - done);
        const std::size_t end = topicText.find('}', at);
        text += Result(topicText.substr(at + begin.size(), end - at - begin.size()), example.Steps);
        done = end + 1;
    }
    return text + topicText.substr(done);
}

} // namespace quorvanta::help
