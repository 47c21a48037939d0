#include "generator/markdown.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <vector>

namespace quorvanta::help {

namespace {

[[noreturn]] void Refuse(const std::string& what, std::string_view text) {
    throw std::runtime_error(what + ": " + std::string(text));
}

// --- Within a line ----------------------------------------------------------------------------

std::string InLine(std::string_view text);

// What stands between here and the closing mark; the mark is taken off the text, too.
std::string_view TakeUntil(std::string_view& text, std::string_view mark) {
    const std::size_t end = text.find(mark);
    if (end == std::string_view::npos)
        Refuse("no " + std::string(mark) + " after", text);
    const std::string_view inside = text.substr(0, end);
    text.remove_prefix(end + mark.size());
    return inside;
}

bool TakeMark(std::string_view& text, std::string_view mark) {
    if (!text.starts_with(mark))
        return false;
    text.remove_prefix(mark.size());
    return true;
}

std::string Tagged(const std::string& tag, const std::string& html) {
    return "<" + tag + ">" + html + "</" + tag + ">";
}

std::string Link(std::string_view text, std::string_view target) {
    const std::size_t place = std::min(target.find('#'), target.size());
    const std::string_view number = target.substr(0, place);
    if (number.empty() ||
        !std::ranges::all_of(number, [](unsigned char c) { return std::isdigit(c); }))
        Refuse("no topic's number", target);
    return "<a href=\"" + PageOf(number) + std::string(target.substr(place)) + "\">" +
           InLine(text) + "</a>";
}

std::string InLine(std::string_view text) {
    std::string html;
    while (!text.empty()) {
        if (TakeMark(text, "\\")) {
            html += Escape(text.substr(0, 1));
            text.remove_prefix(std::min<std::size_t>(1, text.size()));
        } else if (TakeMark(text, "`")) {
            html += Tagged("code", Escape(TakeUntil(text, "`")));
        } else if (TakeMark(text, "**")) {
            html += Tagged("b", InLine(TakeUntil(text, "**")));
        } else if (TakeMark(text, "*")) {
            html += Tagged("i", InLine(TakeUntil(text, "*")));
        } else if (TakeMark(text, "_{")) {
            html += Tagged("sub", InLine(TakeUntil(text, "}")));
        } else if (TakeMark(text, "^{")) {
            html += Tagged("sup", InLine(TakeUntil(text, "}")));
        } else if (TakeMark(text, "[")) {
            const std::string_view shown = TakeUntil(text, "](");
            html += Link(shown, TakeUntil(text, ")"));
        } else {
            html += Escape(text.substr(0, 1));
            text.remove_prefix(1);
        }
    }
    return html;
}

// --- Blocks -----------------------------------------------------------------------------------

std::vector<std::string> Lines(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::string_view Trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// The length of the mark that begins an item of a numbered list; 0 if none does.
std::size_t NumberMark(std::string_view line) {
    std::size_t digits = 0;
    while (digits < line.size() && std::isdigit(static_cast<unsigned char>(line[digits])))
        ++digits;
    return digits > 0 && line.substr(digits).starts_with(". ") ? digits + 2 : 0;
}

std::size_t BulletMark(std::string_view line) {
    return line.starts_with("- ") ? 2 : 0;
}

std::size_t FormulaMark(std::string_view line) {
    return line.starts_with("> ") ? 2 : 0;
}

bool BeginsBlock(std::string_view line) {
    return Trim(line).empty() || line.starts_with("#") || line.starts_with("|") ||
           line.starts_with("```") || BulletMark(line) > 0 || NumberMark(line) > 0 ||
           FormulaMark(line) > 0;
}

class Writer {
  public:
    Writer(std::string_view markdown, const FencedBlock& fenced)
        : lines_(Lines(markdown)), fenced_(fenced) {}

    std::string Html() {
        while (at_ < lines_.size())
            Block();
        return html_;
    }

  private:
    void Block() {
        const std::string& line = lines_[at_];
        if (Trim(line).empty())
            ++at_;
        else if (line.starts_with("### "))
            Heading("h3", 4);
        else if (line.starts_with("## "))
            Heading("h2", 3);
        else if (line.starts_with("```"))
            Fence();
        else if (line.starts_with("|"))
            Table();
        else if (BulletMark(line) > 0)
            List("ul", BulletMark);
        else if (NumberMark(line) > 0)
            List("ol", NumberMark);
        else if (FormulaMark(line) > 0)
            Formula();
        else
            Paragraph();
    }

    void Heading(const std::string& tag, std::size_t mark) {
        html_ += Tagged(tag, InLine(lines_[at_].substr(mark))) + "\n";
        ++at_;
    }

    void Fence() {
        const std::string name = lines_[at_].substr(3);
        std::string inside;
        for (++at_; at_ < lines_.size() && lines_[at_] != "```"; ++at_)
            inside += lines_[at_] + "\n";
        if (at_ == lines_.size())
            Refuse("no end of the block", name);
        ++at_;
        html_ += fenced_(name, inside);
    }

    // A text and the lines that belong to it.
    std::string Joined(std::string text) {
        for (++at_; at_ < lines_.size() && !BeginsBlock(lines_[at_]); ++at_)
            text += " " + std::string(Trim(lines_[at_]));
        return text;
    }

    void Paragraph() { html_ += Tagged("p", InLine(Joined(lines_[at_]))) + "\n"; }

    void List(const std::string& tag, std::size_t (*mark)(std::string_view)) {
        html_ += "<" + tag + ">\n";
        while (at_ < lines_.size() && mark(lines_[at_]) > 0)
            html_ += Tagged("li", InLine(Joined(lines_[at_].substr(mark(lines_[at_]))))) + "\n";
        html_ += "</" + tag + ">\n";
    }

    void Formula() {
        std::string text;
        for (; at_ < lines_.size() && FormulaMark(lines_[at_]) > 0; ++at_)
            text += (text.empty() ? "" : "<br/>") + InLine(lines_[at_].substr(2));
        html_ += "<p class=\"formula\">" + text + "</p>\n";
    }

    void Row(const std::string& tag, std::string_view line) {
        html_ += "<tr>";
        line = Trim(line);
        line.remove_prefix(1);
        while (!line.empty())
            html_ += Tagged(tag, InLine(Trim(TakeUntil(line, "|"))));
        html_ += "</tr>\n";
    }

    void Table() {
        html_ += "<table border=\"1\" cellspacing=\"0\" cellpadding=\"4\">\n";
        Row("th", lines_[at_]);
        for (++at_; at_ < lines_.size() && lines_[at_].starts_with("|"); ++at_)
            if (!lines_[at_].starts_with("|--"))
                Row("td", lines_[at_]);
        html_ += "</table>\n";
    }

    std::vector<std::string> lines_;
    std::size_t at_ = 0;
    const FencedBlock& fenced_;
    std::string html_;
};

} // namespace

std::string ToHtml(std::string_view markdown, const FencedBlock& fenced) {
    return Writer(markdown, fenced).Html();
}

std::string ToHtml(std::string_view markdown) {
    return ToHtml(markdown, [](const std::string& name, const std::string&) -> std::string {
        Refuse("no such block here", name);
    });
}

std::string Escape(std::string_view text) {
    std::string html;
    for (const char c : text) {
        if (c == '&')
            html += "&amp;";
        else if (c == '<')
            html += "&lt;";
        else if (c == '>')
            html += "&gt;";
        else if (c == '"')
            html += "&quot;";
        else
            html += c;
    }
    return html;
}

std::string PageOf(std::string_view number) {
    return std::string(number) + ".html";
}

} // namespace quorvanta::help
