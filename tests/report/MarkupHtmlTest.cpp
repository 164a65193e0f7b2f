#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "HtmlReader.h"
#include "io/Failure.h"
#include "text/Html.h"
#include "text/Render.h"
#include "text/Text.h"

namespace Keltrix::App {
namespace {

std::string Html(std::string_view markup) { return RenderMarkup(markup, Rendering::Html); }

TEST(MarkupHtml, HeadingsStylesAndColoursBecomeTheirElements)
{
    EXPECT_EQ(Html("<h4>Local checks</h4>\n"), "<h4>Local checks</h4>\n");
    EXPECT_EQ(Html("\t<h5>Position 1</h5>\n"), "<h5>Position 1</h5>\n");
    EXPECT_EQ(Html("\t\tM = <b>0.5</b> <i>cl. 4.2.5</i>\n"), "<p class=\"i2\">M = <b>0.5</b> <i>cl. 4.2.5</i></p>\n");
    EXPECT_EQ(Html("<red><b>1.2</b></red> fails\n"), "<p><span class=\"red\"><b>1.2</b></span> fails</p>\n");
}

TEST(MarkupHtml, ATableHasAHeadRowCaptionsAndNumbersToTheRight)
{
    EXPECT_EQ(Html("<table>At\tFx\n<tablewrap><i>axial</i></tablewrap>\n0 m\t5 kN\n</table>\n"),
              "<table class=\"i0\">\n<thead>\n"
              "<tr><th scope=\"col\" class=\"n\">At</th><th scope=\"col\" class=\"n\">Fx</th></tr>\n"
              "<tr><th scope=\"col\" class=\"n\"></th><th scope=\"col\" class=\"n\"><i>axial</i></th></tr>\n"
              "</thead>\n<tbody>\n<tr><td class=\"n\">0 m</td><td class=\"n\">5 kN</td></tr>\n</tbody>\n</table>\n");
}

TEST(MarkupHtml, ANoteGoesAcrossItsTable)
{
    const std::string html = Html("<table>A\tB\tC\n1\t2\t3\n<tablebreak>a note</tablebreak></table>\n");
    EXPECT_NE(html.find("<tr><td colspan=\"3\">a note </td></tr>"), std::string::npos) << html;
}

TEST(MarkupHtml, NamesAndValuesOutsideOfTablesAreRowsWithHeaders)
{
    EXPECT_EQ(Html("\tLocalAxial   \t<b>0.4</b>\n"), "<table class=\"pairs i1\">\n<tr><th scope=\"row\">LocalAxial</th>"
                                                     "<td><b>0.4</b></td></tr>\n</table>\n");
}

TEST(MarkupHtml, TextIsEscapedAndNeverATag)
{
    EXPECT_EQ(Html("<script>alert('x')</script> & \"more\"\n"),
              "<p>&lt;script&gt;alert(&#39;x&#39;)&lt;/script&gt; &amp; &quot;more&quot;</p>\n");
    EXPECT_EQ(Html("bell\x07 and escape\x1B[31m\n"), "<p>bell\xEF\xBF\xBD and escape\xEF\xBF\xBD[31m</p>\n");
    EXPECT_EQ(Html("bad utf-8: \xC3(\n"), "<p>bad utf-8: \xEF\xBF\xBD(</p>\n");
}

TEST(MarkupHtml, UnbalancedAndUnknownTagsAreHandled)
{
    EXPECT_EQ(Html("</b>text</table></red>\n"), "<p>text</p>\n");
    EXPECT_EQ(Html("<b>never closed\nnext line\n"), "<p><b>never closed</b></p>\n<p>next line</p>\n");
    EXPECT_EQ(Html("<blink>no</blink>\n"), "<p>&lt;blink&gt;no&lt;/blink&gt;</p>\n");
    EXPECT_EQ(Html("<table>only a row"),
              "<table class=\"i0\">\n<tbody>\n<tr><td>only a row</td></tr>\n</tbody>\n</table>\n");
    EXPECT_EQ(Html(""), "");
}

// Whatever the mark-up, the fragment is closed in itself and holds no element that is not of the renderer's own.
TEST(MarkupHtml, AnyMarkupGivesAClosedFragmentOfKnownElements)
{
    static constexpr const char* PIECES[] = {"<h4>",
                                             "</h4>",
                                             "<h5>",
                                             "</h6>",
                                             "<b>",
                                             "</b>",
                                             "<i>",
                                             "<red>",
                                             "</red>",
                                             "<blue>",
                                             "<table>",
                                             "</table>",
                                             "\t",
                                             "\n",
                                             "<tablewrap>",
                                             "text",
                                             "12.5",
                                             "</tablewrap>",
                                             "<",
                                             ">",
                                             "&",
                                             "\"",
                                             "<tablebreak>",
                                             "</tablebreak>",
                                             "<script>",
                                             "<img src=x onerror=alert(1)>",
                                             "\x01",
                                             "\xFF",
                                             "<align left>",
                                             "</align>",
                                             "&lt;",
                                             "</style>",
                                             "<!--",
                                             "]]>",
                                             "é",
                                             "'"};
    static const std::set<std::string> KNOWN = {"h4",    "h5",    "h6",    "p",  "b",  "i", "span",
                                                "table", "thead", "tbody", "tr", "th", "td"};
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    for (int round = 0; round < 3000; ++round) {
        std::string markup;
        for (unsigned n = random() % 40; n > 0; --n)
            markup += PIECES[random() % std::size(PIECES)];
        const std::string html = Html(markup);
        const Trial::HtmlReader reader(html);
        ASSERT_EQ(reader.Error(), "") << "seed " << seed << "\n" << markup << "\n---\n" << html;
        for (const Trial::HtmlElement& element : reader.Elements()) {
            ASSERT_TRUE(KNOWN.count(element.name)) << "seed " << seed << "\n" << markup << "\n---\n" << html;
            for (const auto& [name, value] : element.attributes)
                ASSERT_TRUE(name == "class" || name == "scope" || name == "colspan") << name << " in " << html;
        }
    }
}

// The reader on which the other tests rely does find faults.
TEST(HtmlReader, ReportsWhatIsNotWellFormed)
{
    EXPECT_EQ(Trial::HtmlReader("<p class=\"i1\">a &amp; b<b>c</b></p>").Error(), "");
    for (const char* bad : {"<p>", "<p></b></p>", "</p>", "<p>a & b</p>", "<p class=i1></p>", "<p>\x01</p>", "<p"})
        EXPECT_NE(Trial::HtmlReader(bad).Error(), "") << bad;
}

TEST(MarkupHtml, ACssStringEndsOnlyAtItsOwnQuote)
{
    EXPECT_EQ(CssString("Beam 12"), "\"Beam 12\"");
    EXPECT_EQ(CssString("a\"b\\c"), "\"a\\22 b\\5c c\"");
    EXPECT_EQ(CssString("</style>\n"), "\"\\3c \\2f style\\3e \\a \"");
    EXPECT_EQ(CssString("é"), "\"\\e9 \"");
}

} // namespace
} // namespace Keltrix::App
