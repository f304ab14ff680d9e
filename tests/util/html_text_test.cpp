#include "util/html_text.h"

#include <gtest/gtest.h>

namespace rvl {
namespace {

TEST(HtmlText, PlainTextKeepsItsLinesAndSigns) {
    EXPECT_EQ(HtmlFromMessage("One\r\nTwo\nThree\rFour"), "One<br>Two<br>Three<br>Four");
    EXPECT_EQ(HtmlFromMessage("A < B & C > <user@office>"), "A &lt; B &amp; C > &lt;user@office>");
    EXPECT_EQ(HtmlFromMessage("5 &lt; 6 &#228; a&b; &; &"), "5 &lt; 6 &#228; a&b; &amp;; &amp;");
}

TEST(HtmlText, MarkupInsideALineLeavesTheLines) {
    EXPECT_EQ(HtmlFromMessage("<b>Now</b>\r\nat noon & later"), "<b>Now</b><br>at noon & later");
}

TEST(HtmlText, MarkupThatArrangesLinesStaysAsItIs) {
    for (const char* html :
         {"One<BR>\r\nTwo", "<p>One\r\n</p>", "<html>\r\n<body>One</body></html>", "<h1>One</h1>\n"})
        EXPECT_EQ(HtmlFromMessage(html), html);
}

}  // namespace
}  // namespace rvl
