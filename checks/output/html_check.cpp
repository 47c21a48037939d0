#include "output/html.h"

#include <gtest/gtest.h>

namespace quorvanta::checks {
namespace {

TEST(Html, EscapesWhatWouldBeMarkup) {
    EXPECT_EQ(MarkupText("a < b & c > \"d\" 'e'"),
              "a &lt; b &amp; c &gt; &quot;d&quot; &#39;e&#39;");
    EXPECT_EQ(MarkupText("&lt;"), "&amp;lt;");
    EXPECT_EQ(MarkupText("Größe α ≤ 5 % 😀"), "Größe α ≤ 5 % 😀");
}

// XML 1.0 has no place for them, not even escaped.
TEST(Html, LeavesControlCharactersOut) {
    EXPECT_EQ(MarkupText(std::string("a\0b\x01"
                                     "c\x1F"
                                     "d\te\nf",
                                     12)),
              "abcd\te\nf");
    EXPECT_EQ(MarkupText("a\xEF\xBF\xBE"
                         "b\xEF\xBF\xBF"),
              "ab");
    EXPECT_EQ(MarkupText("a\xFF"
                         "b\xC3"),
              "a\xEF\xBF\xBD"
              "b\xEF\xBF\xBD");
}

TEST(Html, NumbersCarryTheirValue) {
    TableLayout table;
    table.StartsWithWords = true;
    table.Blocks = {{{}, {{"a<b", "0,80"}, {"c", "-"}}}};
    const std::string html = HtmlTable(table);
    EXPECT_NE(html.find("<th scope=\"row\" align=\"left\">a&lt;b</th><td align=\"right\" "
                        "sdval=\"0.80\" sdnum=\"1033;\" x:num=\"0.80\">0,80</td>"),
              std::string::npos)
        << html;
    EXPECT_NE(html.find("<td align=\"right\">-</td>"), std::string::npos) << html;
}

TEST(Html, EveryLineIsAParagraph) {
    EXPECT_EQ(HtmlParagraphs("a\n<b>"), "<p>a</p>\n<p>&lt;b&gt;</p>\n");
    EXPECT_EQ(HtmlParagraphs(""), "");
}

} // namespace
} // namespace quorvanta::checks
