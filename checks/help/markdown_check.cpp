// What the Markdown of the help becomes.
#include "generator/markdown.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace quorvanta::help {
namespace {

TEST(HelpMarkdown, Blocks) {
    EXPECT_EQ(ToHtml("## One\n\nText that\ngoes on.\n\n### Two\nText."),
              "<h2>One</h2>\n<p>Text that goes on.</p>\n<h3>Two</h3>\n<p>Text.</p>\n");
    EXPECT_EQ(ToHtml("- a\n  b\n- c\n\nd"), "<ul>\n<li>a b</li>\n<li>c</li>\n</ul>\n<p>d</p>\n");
    EXPECT_EQ(ToHtml("1. a\n   b\n12. c"), "<ol>\n<li>a b</li>\n<li>c</li>\n</ol>\n");
    EXPECT_EQ(ToHtml("> x\n> y"), "<p class=\"formula\">x<br/>y</p>\n");
    EXPECT_EQ(ToHtml("Costs\n0.90. And 5.5."), "<p>Costs 0.90. And 5.5.</p>\n");
    EXPECT_EQ(ToHtml(""), "");
}

TEST(HelpMarkdown, Tables) {
    EXPECT_EQ(ToHtml("| a | b |\n|---|---|\n| *c* | d e |\nf"),
              "<table border=\"1\" cellspacing=\"0\" cellpadding=\"4\">\n"
              "<tr><th>a</th><th>b</th></tr>\n<tr><td><i>c</i></td><td>d e</td></tr>\n"
              "</table>\n<p>f</p>\n");
}

TEST(HelpMarkdown, MarksInALine) {
    EXPECT_EQ(ToHtml("*a* **b** `c*` [d](301) [e](11#f)"),
              "<p><i>a</i> <b>b</b> <code>c*</code> <a href=\"301.html\">d</a> "
              "<a href=\"11.html#f\">e</a></p>\n");
    EXPECT_EQ(ToHtml("*n*_{1 − *α*}^{2}"), "<p><i>n</i><sub>1 − <i>α</i></sub><sup>2</sup></p>\n");
    EXPECT_EQ(ToHtml("\\*a\\* < b & \"c\" > d_e"),
              "<p>*a* &lt; b &amp; &quot;c&quot; &gt; d_e</p>\n");
}

TEST(HelpMarkdown, FencedBlocks) {
    const FencedBlock fenced = [](const std::string& name, const std::string& lines) {
        return "[" + name + "|" + lines + "]";
    };
    EXPECT_EQ(ToHtml("a\n```name\n- x\n\n*y*\n```\nb", fenced),
              "<p>a</p>\n[name|- x\n\n*y*\n]<p>b</p>\n");
}

TEST(HelpMarkdown, RefusesWhatItCantShow) {
    for (const char* text : {"*a", "**a*", "`a", "x_{a", "[a](301", "[a](http://b)", "[a]()",
                             "| a | b", "```name\nno end", "```name\n```"})
        EXPECT_THROW(ToHtml(text), std::runtime_error) << text;
}

} // namespace
} // namespace quorvanta::help
