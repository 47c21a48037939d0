#include "generator/parameterpages.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "generator/markdown.h"
#include "output/format.h"

#include <algorithm>
#include <string>

namespace quorvanta::help {

namespace {

std::string Label(i16 kind) {
    return StripAmpersand(ParLabel(kind));
}

std::string LimitText(f64 limit) {
    return Format(limit, "#####0.######");
}

// The values that a kind may have; empty if there is no limit.
std::string RangeText(i16 kind) {
    const bool hasMin = ParMin(kind) > -NoValue;
    const bool hasMax = ParMax(kind) < NoValue;
    if (hasMin && hasMax)
        return "from " + LimitText(ParMin(kind)) + " to " + LimitText(ParMax(kind));
    if (hasMin)
        return LimitText(ParMin(kind)) + " or more";
    return hasMax ? LimitText(ParMax(kind)) + " or less" : std::string();
}

// When a kind is in the list, which values it may have, and its start value.
std::string FactsHtml(i16 kind, const std::string& condition) {
    std::string facts;
    if (!condition.empty())
        facts += "In the list when " + condition + ". ";
    const std::string range = RangeText(kind);
    if (!range.empty())
        facts += "Values: " + range + ". ";
    return "<p class=\"facts\">" + Escape(facts + "Start value: " + ParText(kind)) + ".</p>\n";
}

std::string PageOf(i32 number) {
    return help::PageOf(std::to_string(number));
}

i32 NumberOf(const HelpSubject& subject) {
    IsTest = subject.IsTest;
    TestNo = subject.TestNo;
    DistrNo = subject.DistrNo;
    NoOfSamples = subject.NoOfSamples;
    NoOfTails = subject.NoOfTails;
    ParListNo = subject.ParListNo;
    ProcedureNo = subject.ProcedureNo;
    return HelpParameters();
}

// What the values of a list are for.
std::string PurposeHtml(const HelpSubject& analysis) {
    return IsSolved(analysis)
               ? "Each of them can be the unknown: press its label, and it is calculated from the "
                 "others."
               : "A simulation takes all of them but the power, which it estimates.";
}

// A text without its paragraphs about the unknown, which no value of a simulation is.
std::string WithoutUnknown(const std::string& text) {
    const std::string end = "\n\n";
    std::string kept;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t next = std::min(text.find(end, at), text.size());
        const std::string paragraph = text.substr(at, next - at);
        if (!paragraph.starts_with("As the unknown") && !paragraph.starts_with("When you solve"))
            kept += paragraph + end;
        at = next + end.size();
    }
    return kept;
}

Page ParameterPage(const HelpSubject& subject, const ParameterTexts& texts, i32 textsOf) {
    const i32 description = HelpDescriptionOf(subject);
    Page page;
    page.Number = NumberOf(subject);
    page.File = PageOf(page.Number);
    page.Title = HelpSubjectName(subject) + ": parameters, " + HelpChoicesInWords(subject);
    page.Body = "<p>The parameters of <a href=\"" + PageOf(description) + "\">" +
                Escape(HelpSubjectName(subject)) + "</a> in the order of the window. " +
                PurposeHtml(subject) + "</p>\n";
    const auto lists = ParameterLists(subject);
    for (const i16 kind : KindsOf(lists)) {
        const std::string& text = TextOf(texts, kind, description, textsOf);
        page.Body += "<h3><a name=\"p" + std::to_string(kind) + "\"></a>" + Escape(Label(kind)) +
                     "</h3>\n" + ToHtml(IsSolved(subject) ? text : WithoutUnknown(text)) +
                     FactsHtml(kind, ConditionOf(kind, lists));
    }
    return page;
}

std::string Lower(std::string text) {
    std::ranges::transform(text, text.begin(), LowerCase);
    return text;
}

} // namespace

std::vector<Page> ParameterPages(const HelpSubject& analysis, const ParameterTexts& texts,
                                 i32 textsOf) {
    std::vector<Page> pages;
    if (!IsServed(analysis))
        return pages;
    for (const HelpSubject& subject : ParameterSubjects(analysis))
        pages.push_back(ParameterPage(subject, texts, textsOf));
    return pages;
}

std::string AllParametersHtml(const ParameterTexts& texts, std::vector<Keyword>& keywords) {
    std::vector<ParameterTexts::const_iterator> sorted;
    for (auto text = texts.begin(); text != texts.end(); ++text)
        sorted.push_back(text);
    std::ranges::stable_sort(sorted, {},
                             [](const auto& text) { return Lower(Label(text->first.first)); });
    std::string html;
    for (const auto& text : sorted) {
        const auto [kind, description] = text->first;
        const std::string place = "p" + std::to_string(kind) +
                                  (description == 0 ? "" : "-" + std::to_string(description));
        html += "<h3><a name=\"" + place + "\"></a>" + Escape(Label(kind));
        if (description != 0)
            html += " (" + Escape(HelpSubjectName(HelpSubjectOf(description))) + ")";
        html += "</h3>\n" + ToHtml(text->second) + FactsHtml(kind, "");
        if (description == 0)
            keywords.push_back({Label(kind), place});
    }
    return html;
}

} // namespace quorvanta::help
