#include <gtest/gtest.h>

#include <cmath>
#include <regex>

#include "HtmlReader.h"
#include "app/AppSupport.h"
#include "commands/CodeCommands.h"
#include "report/Style.h"
#include "text/Json.h"

namespace Keltrix::App {
namespace {

using Trial::HtmlElement;
using Trial::HtmlReader;

std::string WithTitle(const std::string& title)
{
    std::string text = Trial::GOOD_MEMBER;
    return text.replace(text.find("Floor beam"), 10, title);
}

struct Made {
    ExitCode code;
    std::string html;
    std::string err;
};

// A report of files with these texts.
Made Make(const std::vector<std::string>& texts, TitleBlock block = {})
{
    const Trial::TestDirectory directory;
    ReportOptions options;
    for (std::size_t i = 0; i < texts.size(); ++i)
        options.files.push_back(directory.Write("m" + std::to_string(i) + ".csv", texts[i]));
    options.output = directory.Path("out.html");
    block.version = "9.8.7";
    options.block = block;
    std::istringstream in;
    std::string err;
    const Console console{in, [](std::string_view) {}, [&](std::string_view text) { (err += text) += '\n'; }};
    const ExitCode code = Report(options, console);
    return {code, Trial::ReadWhole(options.output), err};
}

Made MakeExamples(const std::string& arguments)
{
    const auto result = Trial::RunKsteel("report -o - " + arguments);
    return {static_cast<ExitCode>(result.code), result.out, result.err};
}

std::string AttributeOf(const HtmlElement& element, const std::string& name)
{
    const auto it = element.attributes.find(name);
    return it == element.attributes.end() ? std::string() : it->second;
}

// The document is well-formed, its ids are unique and its references lead somewhere.
void ExpectSound(const HtmlReader& reader)
{
    ASSERT_EQ(reader.Error(), "");
    std::set<std::string> ids;
    for (const HtmlElement& element : reader.Elements()) {
        const std::string id = AttributeOf(element, "id");
        if (!id.empty()) {
            EXPECT_TRUE(ids.insert(id).second) << "twice: " << id;
        }
    }
    for (const HtmlElement& element : reader.Elements()) {
        std::istringstream labels(AttributeOf(element, "aria-labelledby"));
        for (std::string label; labels >> label;)
            EXPECT_TRUE(ids.count(label)) << "no element " << label;
        const std::string link = AttributeOf(element, "href");
        if (!link.empty()) {
            EXPECT_TRUE(link[0] == '#' && ids.count(link.substr(1))) << "leads nowhere: " << link;
        }
    }
}

TEST(Report, EveryExampleGivesASoundDocument)
{
    for (const auto& entry : std::filesystem::directory_iterator(KSTEEL_SOURCE_DIR "/examples")) {
        if (entry.path().extension() != ".csv") continue;
        SCOPED_TRACE(entry.path().string());
        const Made made = MakeExamples("'" + entry.path().string() + "'");
        EXPECT_EQ(made.code, EXIT_FINE) << made.err;
        const HtmlReader reader(made.html);
        ExpectSound(reader);
        EXPECT_EQ(reader.Named("article").size(), 1u);
        EXPECT_EQ(reader.OfClass("svg", "member").size(), 1u);
        EXPECT_EQ(reader.OfClass("svg", "section-drawing").size(), 1u);
        EXPECT_EQ(reader.OfClass("svg", "chart").size(), 1u);
        EXPECT_GE(reader.OfClass("svg", "diagram").size(), 1u);
        EXPECT_GE(reader.Named("details").size(), 4u);
        EXPECT_EQ(reader.Named("nav").size(), 0u); // one member needs no index
    }
}

TEST(Report, NeedsNothingButItself)
{
    const std::string html = MakeExamples("examples/*.csv").html;
    const HtmlReader reader(html);
    for (const char* name : {"script", "link", "img", "iframe", "object", "base", "form"})
        EXPECT_TRUE(reader.Named(name).empty()) << name;
    EXPECT_NE(html.find("default-src 'none'; style-src 'unsafe-inline'"), std::string::npos);
    EXPECT_EQ(html.find("@import"), std::string::npos);
    EXPECT_EQ(html.find("url("), std::string::npos);
    const std::regex address("https?://[^\"' ]*");
    for (auto it = std::sregex_iterator(html.begin(), html.end(), address); it != std::sregex_iterator(); ++it)
        EXPECT_EQ(it->str(), "http://www.w3.org/2000/svg");
}

TEST(Report, HasLandmarksTableHeadersAndTextForDrawings)
{
    const HtmlReader reader(MakeExamples("examples/*.csv").html);
    ExpectSound(reader);
    EXPECT_EQ(reader.Named("main").size(), 1u);
    EXPECT_EQ(reader.Named("header").size(), 1u);
    EXPECT_EQ(reader.Named("footer").size(), 1u);
    EXPECT_EQ(reader.Named("nav").size(), 1u);
    EXPECT_EQ(reader.Named("h1").size(), 1u);
    EXPECT_EQ(AttributeOf(*reader.Named("html")[0], "lang"), "en");
    for (const HtmlElement* th : reader.Named("th"))
        EXPECT_TRUE(AttributeOf(*th, "scope") == "col" || AttributeOf(*th, "scope") == "row");
    const auto drawings = reader.Named("svg");
    EXPECT_EQ(reader.Named("title").size(), drawings.size() + 1);
    EXPECT_EQ(reader.Named("desc").size(), drawings.size());
    for (const HtmlElement* svg : drawings)
        EXPECT_EQ(AttributeOf(*svg, "role"), "img");
    for (const HtmlElement* text : reader.Named("desc"))
        EXPECT_GT(text->text.size(), 10u);
}

TEST(Report, IndexIsSortedByUtilisationWorstFirstAndAgreesWithCheck)
{
    const Made made = MakeExamples("examples/*.csv tests/report/failing.csv");
    EXPECT_EQ(made.code, EXIT_MEMBER_FAILS);
    const auto check = Trial::RunKsteel("check --format json examples/*.csv tests/report/failing.csv");
    std::vector<std::pair<double, std::string>> expected;
    for (const Json& member : Json::parse(check.out))
        expected.emplace_back(member.at("overall").get<double>(), member.at("title").get<std::string>());
    std::stable_sort(expected.begin(), expected.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    // Index and sheets have the same order.
    std::size_t inIndex = 0;
    std::size_t inSheets = made.html.find("<main");
    ASSERT_NE(inSheets, std::string::npos);
    for (const auto& [overall, title] : expected) {
        inIndex = made.html.find("<bdi>" + title + "</bdi></a>", inIndex);
        ASSERT_NE(inIndex, std::string::npos) << title;
        inSheets = made.html.find("<bdi>" + title + "</bdi></h2>", inSheets);
        ASSERT_NE(inSheets, std::string::npos) << title;
    }
    EXPECT_EQ(expected.front().second, "Overloaded floor beam");
    EXPECT_NE(made.html.find("9 members: 8 pass, 1 do not."), std::string::npos);
}

TEST(Report, HostileTitlesAreTextEverywhere)
{
    for (const std::string title :
         {"<script>alert(1)</script>", "</title></style></svg><img src=x onerror=alert(1)>", "\"' onload=\"alert(1)",
          "<b>bold</b> & <red>red</red> &lt;", "]]><!-- --> <h4>", "\xE2\x80\xAEtfel ot thgir", "a\x01\x1B[31mb"}) {
        SCOPED_TRACE(title);
        TitleBlock block;
        block.job = block.client = block.project = block.revision = block.forces = block.member = title;
        block.made = block.checked = block.approved = {title, title};
        const Made made = Make({WithTitle(title)}, block);
        const HtmlReader reader(made.html);
        ExpectSound(reader);
        for (const char* name : {"script", "img", "red"})
            EXPECT_TRUE(reader.Named(name).empty()) << name;
        EXPECT_EQ(reader.Named("style").size(), 1u);
        for (const HtmlElement& element : reader.Elements())
            for (const auto& [name, value] : element.attributes)
                EXPECT_FALSE(name.starts_with("on")) << element.name << ' ' << name;
    }
}

TEST(Report, TheTitleShowsAsItWasWritten)
{
    const Made made = Make({WithTitle("5 < 6 & <b>so on</b>")});
    EXPECT_NE(made.html.find("<bdi>5 &lt; 6 &amp; &lt;b&gt;so on&lt;/b&gt;</bdi></h2>"), std::string::npos);
}

TEST(Report, TitleBlockHasWhatTheUserGaveAndNoClock)
{
    TitleBlock block;
    block.job = "Unit 7";
    block.member = "B12";
    block.made = {"A. Engineer", "2001-02-03"};
    const Made first = Make({Trial::GOOD_MEMBER}, block);
    for (const char* text : {"Unit 7", "B12", "2001-02-03", "A. Engineer", "ksteel 9.8.7"})
        EXPECT_NE(first.html.find(text), std::string::npos) << text;
    const Made bare = Make({Trial::GOOD_MEMBER});
    EXPECT_EQ(bare.html.find("<th scope=\"row\">Date</th>"), std::string::npos);
    EXPECT_EQ(MakeExamples("examples/column.csv").html, MakeExamples("examples/column.csv").html);
}

TEST(Report, TitleBlockHasClientProjectRevisionSourceOfForcesAndCode)
{
    TitleBlock block;
    block.client = "Harbour <Board>";
    block.project = "P-123";
    block.revision = "C2";
    block.forces = "frame analysis, run 4";
    const std::string html = Make({Trial::GOOD_MEMBER}, block).html;
    for (const char* row : {"<th scope=\"row\">Client</th><td><bdi>Harbour &lt;Board&gt;</bdi></td>",
                            "<th scope=\"row\">Project</th><td><bdi>P-123</bdi></td>",
                            "<th scope=\"row\">Revision</th><td><bdi>C2</bdi></td>",
                            "<th scope=\"row\">Forces from</th><td><bdi>frame analysis, run 4</bdi></td>",
                            "<th scope=\"row\">Code</th><td>BS 5950-1:2000, with its 2001 corrigendum</td>"})
        EXPECT_NE(html.find(row), std::string::npos) << row;
    ExpectSound(HtmlReader(html));
}

TEST(Report, WhoeverHasNotSignedYetFindsThePlace)
{
    TitleBlock block;
    block.made = {"A. Engineer", "2001-02-03"};
    block.approved = {"", "2001-03-04"};
    const std::string html = Make({Trial::GOOD_MEMBER}, block).html;
    for (const char* row :
         {"Made</th><td><bdi>A. Engineer</bdi></td><th scope=\"row\">Date</th><td><bdi>2001-02-03</bdi></td>",
          "Checked</th><td><bdi></bdi></td><th scope=\"row\">Date</th><td><bdi></bdi></td>",
          "Approved</th><td><bdi></bdi></td><th scope=\"row\">Date</th><td><bdi>2001-03-04</bdi></td>"})
        EXPECT_NE(html.find(row), std::string::npos) << row;
    EXPECT_EQ(Make({Trial::GOOD_MEMBER}).html.find("Approved"), std::string::npos);
}

// Digests by Python's hashlib of the same bytes.
TEST(Report, FooterHasTheUnitsAndTheChecksumOfEachInput)
{
    const std::string member = "TITLE,Beam\nSECTION,UB 457x191x67,ROLLED\nGRADE,S275\nNET_TO_GROSS,1.0\n"
                               "ALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2\nSHEAR_LAG_FACTOR,0.7\n"
                               "EFFECTIVE_LENGTH_OVERRIDES,NO\nHEADINGS\nMEMBERPOINT,1,0,Pinned,0\n"
                               "MEMBERPOINT,2,6,Pinned,0\nHEADINGS\n"
                               "SUBSPAN,1,0,0,-5000,0,0,5000,0,0,0,0,0,0,Free,0\nEND\n";
    const Made made = Make({member, member + "\n"});
    const HtmlReader reader(made.html);
    ExpectSound(reader);
    ASSERT_EQ(reader.OfClass("td", "hash").size(), 2u) << made.err;
    EXPECT_EQ(reader.OfClass("td", "hash")[0]->text,
              "7d9ddc7faabec4ab2e83671d37353902fdb36e2682577ba5994d1f92ca1734a1");
    EXPECT_EQ(reader.OfClass("td", "hash")[1]->text,
              "c1531ee75568f527482c6eac18a84badb27f8c78f24504bd8ccbe7ccc6f889fb");
    // And on every printed page of the member, beside the units.
    // CssString writes what is neither a letter nor a digit as its code.
    EXPECT_NE(made.html.find("Input SHA\\2d 256 7d9ddc7faabec4ab"), std::string::npos);
    EXPECT_NE(made.html.find("Units: m, kN, kNm, N/mm²; section dimensions mm."), std::string::npos);
}

TEST(Report, TheShortFormHasTheGoverningPositionAndSpanAlone)
{
    for (const char* name : {"floor_beam", "column", "continuous_beam", "crane_beam", "tie"}) {
        SCOPED_TRACE(name);
        const std::string file = std::string("examples/") + name + ".csv";
        const Made brief = MakeExamples("--brief " + file);
        const Made full = MakeExamples(file);
        EXPECT_EQ(brief.code, full.code);
        const HtmlReader reader(brief.html);
        ExpectSound(reader);
        const Json checked = Json::parse(Trial::RunKsteel("check --format json " + file).out).at(0);
        double local = 0.0;
        double buckling = 0.0;
        for (const Json& check : checked.at("checks")) {
            if (check.at("utilisation").is_null() || check.at("start").is_null()) continue;
            double& largest = check.at("start") == check.at("end") ? local : buckling;
            largest = std::max(largest, check.at("utilisation").get<double>());
        }
        // Each part has its largest utilisation beside its heading; the largest of all are among those that stayed.
        double shownLargest = 0.0;
        for (const HtmlElement* result : reader.OfClass("span", "result"))
            shownLargest = std::max(shownLargest, std::stod(result->text));
        EXPECT_NEAR(shownLargest, std::max(local, buckling), 6e-4);
        EXPECT_LT(reader.Named("details").size(), HtmlReader(full.html).Named("details").size());
        std::set<std::string> positions;
        for (const HtmlElement* heading : reader.Named("h5")) {
            const std::size_t at = heading->text.rfind(", at ");
            if (heading->text.starts_with("Position ")) positions.insert(heading->text.substr(at));
        }
        EXPECT_EQ(positions.size(), local > 0.0 ? 1u : 0u);
        for (const HtmlElement* part : reader.Named("details"))
            EXPECT_TRUE(part->attributes.count("open"));
        EXPECT_TRUE(reader.OfClass("svg", "chart").empty());
    }
}

// What fails, and what was not evaluated, is in the short form however often.
TEST(Report, TheShortFormKeepsEveryFailureAndWhatWasNotEvaluated)
{
    const std::string brief = MakeExamples("--brief tests/report/failing.csv").html;
    const std::string full = MakeExamples("tests/report/failing.csv").html;
    const auto count = [](const std::string& text, const std::string& part) {
        std::size_t found = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
            ++found;
        return found;
    };
    const auto table = [](const std::string& html) {
        const std::size_t start = html.find("Checks that were evaluated");
        return html.substr(start, html.find("Flags and assumptions", start) - start);
    };
    EXPECT_GT(count(table(full), ">Fails<"), 0u);
    EXPECT_EQ(count(table(brief), ">Fails<"), count(table(full), ">Fails<"));
    EXPECT_EQ(count(table(brief), "not evaluated: "), count(table(full), "not evaluated: "));
    // What lies outside the input is named in one sentence.
    EXPECT_GT(count(table(full), "outside the input: "), 0u);
    for (const char* rule : {"Outside the input", "(2.4.2)", "(2.5.2)"})
        EXPECT_EQ(count(table(brief), rule), 1u) << rule;
}

TEST(Report, ColumnsAndTiesAreNamedForWhatTheyAre)
{
    for (const char* name : {"column", "hollow_strut", "angle_brace"})
        EXPECT_NE(
            MakeExamples(std::string("examples/") + name + ".csv").html.find(">Column, strut or brace, by its axial"),
            std::string::npos)
            << name;
    EXPECT_NE(MakeExamples("examples/tie.csv").html.find(">Tie or brace, by its axial"), std::string::npos);
    for (const char* name : {"floor_beam", "continuous_beam", "cantilever", "crane_beam"}) {
        const std::string html = MakeExamples(std::string("examples/") + name + ".csv").html;
        EXPECT_EQ(html.find("by its axial force"), std::string::npos) << name;
    }
    // A support of a column holds it across, and nothing says that it stands on it.
    EXPECT_EQ(MakeExamples("examples/*.csv").html.find("vertical support"), std::string::npos);
}

TEST(Report, BarsAreAsLongAsTheirUtilisation)
{
    const HtmlReader reader(MakeExamples("examples/column.csv").html);
    const Json member = Json::parse(Trial::RunKsteel("check --format json examples/column.csv").out)[0];
    const HtmlElement& limit = *reader.OfClass("line", "limit").at(0);
    std::vector<double> expected;
    for (const Json& entry : member.at("checks")) {
        const double u = entry.at("utilisation").get<double>();
        // What stands there for information is no check and has no bar.
        if (u > 0.0 && entry.at("status") != "information") expected.push_back(u);
    }
    std::vector<double> drawn;
    double unit = 0.0;
    for (const HtmlElement& element : reader.Elements()) {
        const std::string cls = AttributeOf(element, "class");
        if (element.name != "rect" || !cls.starts_with("bar")) continue;
        unit = std::stod(AttributeOf(limit, "x1")) - std::stod(AttributeOf(element, "x"));
        drawn.push_back(std::stod(AttributeOf(element, "width")) / unit);
    }
    ASSERT_EQ(drawn.size(), expected.size());
    std::sort(drawn.begin(), drawn.end());
    std::sort(expected.begin(), expected.end());
    for (std::size_t i = 0; i < drawn.size(); ++i)
        EXPECT_NEAR(drawn[i], expected[i], 0.011 / unit) << "coordinates are rounded to 0.01 mm";
    EXPECT_EQ(reader.OfClass("rect", "bar governs").size(), 1u);
    EXPECT_EQ(reader.OfClass("tr", "governs").size(), 1u);
}

TEST(Report, AFailingMemberSaysSoInWordsAndOpensItsCalculation)
{
    const Made made = MakeExamples("tests/report/failing.csv");
    EXPECT_EQ(made.code, EXIT_MEMBER_FAILS);
    const HtmlReader reader(made.html);
    ExpectSound(reader);
    EXPECT_NE(made.html.find("<p class=\"verdict fails\"><span class=\"fail\">Fails</span>"), std::string::npos);
    EXPECT_NE(made.html.find("FAIL LOCAL BENDING MAJOR: the major-axis moment exceeds the moment capacity"),
              std::string::npos);
    EXPECT_GE(reader.OfClass("rect", "bar fails").size(), 1u);
    std::size_t open = 0;
    for (const HtmlElement* details : reader.Named("details"))
        open += details->attributes.count("open");
    EXPECT_GE(open, 1u);
    EXPECT_LT(open, reader.Named("details").size());
}

TEST(Report, TheCalculationHasItsClausesAndIsFoldedBySpan)
{
    const Made made = MakeExamples("examples/floor_beam.csv");
    for (const char* text : {"Lateral-torsional buckling, point 1 to 3", "Lateral-torsional buckling, point 3 to 4",
                             "Position 1: left end of sub-span 1"})
        EXPECT_NE(made.html.find(std::string("<summary><h5>") + text), std::string::npos) << text;
    EXPECT_NE(made.html.find("<i>cl. 4.3.6.4</i>"), std::string::npos);
    EXPECT_NE(made.html.find("<span class=\"result\">0.878</span>"), std::string::npos);
}

TEST(Report, ABadFileDoesNotKeepTheOthersOutAndIsNamed)
{
    const Made made = Make({Trial::GOOD_MEMBER, "no member at all\n"});
    EXPECT_EQ(made.code, EXIT_BAD_INPUT);
    const HtmlReader reader(made.html);
    ExpectSound(reader);
    EXPECT_EQ(reader.Named("article").size(), 1u);
    EXPECT_NE(made.html.find("Remarks on the input files"), std::string::npos);
    EXPECT_NE(made.html.find("m1.csv:1"), std::string::npos);
}

TEST(Report, WithoutAMemberNoFileIsWrittenOrTouched)
{
    const Trial::TestDirectory directory;
    const std::string kept = directory.Write("kept.html", "old");
    const std::string bad = directory.Write("bad.csv", "nothing\n");
    EXPECT_EQ(Trial::RunKsteel("report '" + bad + "' -o '" + kept + "'").code, 2);
    EXPECT_EQ(Trial::ReadWhole(kept), "old");
    EXPECT_EQ(Trial::RunKsteel("report '" + bad + "' -o '" + directory.Path("new.html") + "'").code, 2);
    EXPECT_FALSE(std::filesystem::exists(directory.Path("new.html")));
}

TEST(Report, ExitCodesOfUsageAndOutput)
{
    EXPECT_EQ(Trial::RunKsteel("report examples/tie.csv").code, 3);
    EXPECT_EQ(Trial::RunKsteel("report examples/tie.csv examples/column.csv --member B1 -o -").code, 3);
    const auto full = Trial::RunKsteel("report examples/tie.csv -o /dev/full");
    EXPECT_EQ(full.code, 2);
    EXPECT_NE(full.err.find("cannot be written"), std::string::npos) << full;
    EXPECT_EQ(Trial::RunKsteel("report examples/tie.csv -o /no/such/place/out.html").code, 2);
}

TEST(Report, AThousandMembersOfOneFileAreOneDocument)
{
    std::string text;
    for (int i = 0; i < 1000; ++i)
        text += WithTitle("Beam " + std::to_string(i));
    const Made made = Make({text});
    EXPECT_EQ(made.code, EXIT_FINE) << made.err;
    const HtmlReader reader(made.html);
    ExpectSound(reader);
    EXPECT_EQ(reader.Named("article").size(), 1000u);
    // Nothing grows with the number of members but the number of sheets.
    const std::size_t one = Make({Trial::GOOD_MEMBER}).html.size();
    EXPECT_LT(made.html.size(), 1000 * one);
}

TEST(Report, NumbersAndTheirUnitsStayOnOneLine)
{
    EXPECT_EQ(WithUnitsKept("4.3.6 lateral, 0 m to 7.5 m"), "4.3.6 lateral, 0\xC2\xA0m to 7.5\xC2\xA0m");
    EXPECT_EQ(WithUnitsKept("8 beams"), "8 beams");
    EXPECT_EQ(WithUnitsKept(""), "");
}

// --- Contrast of the palettes ---

double Luminance(const std::string& hex)
{
    const auto channel = [&](std::size_t at) {
        const double c = std::stoi(hex.substr(at, 2), nullptr, 16) / 255.0;
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(1) + 0.7152 * channel(3) + 0.0722 * channel(5);
}

// WCAG 2.1, 1.4.3.
double Contrast(const std::string& a, const std::string& b)
{
    const double la = Luminance(a);
    const double lb = Luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

TEST(ReportStyle, TextKeepsAContrastOf4Point5InBothPalettes)
{
    EXPECT_NEAR(Contrast("#000000", "#ffffff"), 21.0, 1e-9);
    EXPECT_NEAR(Contrast("#777777", "#ffffff"), 4.48, 0.005); // known to be just short
    const std::string style = ReportStyle();
    const std::size_t dark = style.find("prefers-color-scheme: dark");
    ASSERT_NE(dark, std::string::npos);
    for (const std::size_t start : {std::size_t(0), dark}) {
        const auto colour = [&](const std::string& name) {
            return style.substr(style.find("--" + name + ": ", start) + name.size() + 4, 7);
        };
        for (const char* text : {"ink", "muted", "link", "pass", "fail", "warn"}) {
            for (const char* ground : {"page", "panel"})
                EXPECT_GE(Contrast(colour(text), colour(ground)), 4.5) << text << " on " << ground << " from " << start;
        }
        // Shapes: 1.4.11 asks for 3.
        for (const char* shape : {"bar", "bar-governs", "bar-fails"})
            EXPECT_GE(Contrast(colour(shape), colour("page")), 3.0) << shape << " from " << start;
    }
}

} // namespace
} // namespace Keltrix::App
