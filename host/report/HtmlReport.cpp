#include "report/HtmlReport.h"

#include <algorithm>
#include <cmath>

#include "report/Join.h"
#include "report/Style.h"
#include "text/Html.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

const std::string UNITS = "Units: m, kN, kNm, N/mm²; section dimensions mm.";

std::string Meter(double utilisation)
{
    const double share = std::clamp(std::isnan(utilisation) ? 1.0 : utilisation, 0.0, 1.0);
    return "<span class=\"meter\" aria-hidden=\"true\"><span" +
           std::string(utilisation > 1.0 ? " class=\"over\"" : "") + " style=\"width:" + Rounded(100.0 * share, 3) +
           "%\"></span></span>";
}

class SheetsInMemory : public SheetStore {
public:
    void Add(std::string_view sheet) override { m_sheets.emplace_back(sheet); }
    std::string Sheet(std::size_t i) override { return m_sheets[i]; }

private:
    std::vector<std::string> m_sheets;
};

// What stands in a corner of every printed page.
std::string MarginBox(const char* place, const std::string& content)
{
    return std::string("@") + place + " { content: " + content + "; font: 8pt sans-serif; }\n";
}

} // namespace

HtmlReport::HtmlReport(TitleBlock block) : HtmlReport(std::move(block), std::make_unique<SheetsInMemory>()) {}

HtmlReport::HtmlReport(TitleBlock block, std::unique_ptr<SheetStore> sheets) :
    m_block(std::move(block)), m_sheets(std::move(sheets))
{}

void HtmlReport::Add(const CheckedMember& checked, const LoadPart& loads)
{
    std::string id = "m";
    id += std::to_string(m_rows.size() + 1);
    m_sheets->Add(MemberSheet(checked, m_block, id, loads));
    m_rows.push_back({id, checked.file, checked.title, checked.Section(), checked.Grade(), checked.Status(),
                      CountText(checked.warnings), checked.Governing(), checked.Utilisation(), m_rows.size()});
}

void HtmlReport::Write(const TextSink& put)
{
    std::stable_sort(m_rows.begin(), m_rows.end(),
                     [](const Row& a, const Row& b) { return a.utilisation > b.utilisation; });
    put(Head());
    const bool hasIndex = m_rows.size() > 1;
    if (hasIndex) put(Index());
    put(Remarks() + (hasIndex ? Inputs() : std::string()) + "<main id=\"main\">\n");
    for (const Row& row : m_rows) {
        put("<article id=\"" + row.id + (hasIndex ? "\" class=\"sheet\"" : "\" class=\"sheet only\"") +
            " aria-labelledby=\"" + row.id + "-h\">\n");
        put(m_sheets->Sheet(row.sheet));
        put(hasIndex ? "<p class=\"back\"><a href=\"#index\">Back to the index</a></p>\n</article>\n" : "</article>\n");
    }
    // What follows several sheets would be printed on a page of its own.
    put("</main>\n<footer" + std::string(hasIndex ? " class=\"back\"" : "") + ">\n<p>Made by ksteel " +
        EscapedHtml(m_block.version) + ". " + UNITS + "</p>\n" + (hasIndex ? std::string() : Inputs()) +
        "</footer>\n</body>\n</html>\n");
}

// The policy keeps a browser from running or fetching anything, whatever a text may hold. The running header of each sheet's
// pages names its member.
std::string HtmlReport::Head() const
{
    const std::string job = m_block.job.empty() ? "Calculation sheet" : m_block.job;
    std::string signature = m_block.made.name;
    if (!m_block.made.date.empty()) AddItem(signature, ", ", m_block.made.date);
    std::string reference = job;
    if (!m_block.project.empty()) AddItem(reference, ", ", m_block.project);
    if (!m_block.revision.empty()) AddItem(reference, ", ", "revision " + m_block.revision);
    const std::string title = m_rows.size() == 1 ? m_rows.front().title : job;
    std::string head =
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'unsafe-inline'\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
        "<meta name=\"generator\" content=\"ksteel " +
        EscapedHtml(m_block.version) + "\">\n<title>" + EscapedHtml(title) + "</title>\n<style>" + ReportStyle() +
        "@page {\n" + MarginBox("top-left", CssString(reference)) +
        MarginBox("bottom-left", CssString("ksteel " + m_block.version + ". " + UNITS)) +
        MarginBox("bottom-center", CssString(signature)) +
        MarginBox("bottom-right", "\"Page \" counter(page) \" of \" counter(pages)") + "}\n";
    if (m_rows.size() == 1) {
        // A named page always starts a new page. A single sheet stays on the default page so that the title does not
        // stand alone.
        head += "@page {\n" + MarginBox("top-right", CssString(m_rows.front().title)) +
                PageFooter(m_rows.front().file) + "}\n";
    } else {
        for (const Row& row : m_rows)
            head += "@page " + row.id + " {\n" + MarginBox("top-right", CssString(row.title)) + PageFooter(row.file) +
                    "}\n#" + row.id + " { page: " + row.id + "; }\n";
    }
    return head + "</style>\n</head>\n<body>\n<a class=\"skip\" href=\"#main\">To the calculation</a>\n<header>\n<h1>" +
           "<bdi>" + EscapedHtml(job) + "</bdi></h1>\n</header>\n";
}

// The checksum's first digits tell revisions of a file apart; the end of the document has all of them.
std::string HtmlReport::PageFooter(const std::string& file) const
{
    constexpr std::size_t shown = 16;
    const auto input = m_inputs.find(file);
    if (input == m_inputs.end()) return {};
    return MarginBox("bottom-left", CssString("ksteel " + m_block.version + ". " + UNITS + " Input SHA-256 " +
                                              input->second.substr(0, shown) + "..."));
}

std::string HtmlReport::Inputs() const
{
    if (m_inputs.empty()) return {};
    std::string html =
        "<table class=\"pairs inputs\">\n<caption>Input files and the SHA-256 of their bytes</caption>\n<tbody>\n";
    for (const auto& [name, sha256] : m_inputs)
        html += "<tr><th scope=\"row\"><bdi>" + EscapedHtml(name) + "</bdi></th><td class=\"hash\">" + sha256 +
                "</td></tr>\n";
    return html + "</tbody></table>\n";
}

std::string HtmlReport::IndexRow(const Row& row, std::size_t number) const
{
    return "<tr><td class=\"n\">" + std::to_string(number) + "</td><th scope=\"row\"><a href=\"#" + row.id +
           "\"><bdi>" + EscapedHtml(row.title) + "</bdi></a></th><td class=\"name\">" + EscapedHtml(row.section) +
           "</td><td>" + EscapedHtml(row.grade) + "</td><td>" + StatusHtml(row.status) +
           (row.warnings.empty() ? "" : ", <span class=\"orange\">" + row.warnings + "</span>") +
           "</td><td class=\"n\">" + Meter(row.utilisation) + UtilisationText(row.utilisation) + "</td><td>" +
           EscapedHtml(WithUnitsKept(row.governing)) + "</td></tr>\n";
}

std::string HtmlReport::Index() const
{
    const auto passing = static_cast<std::size_t>(
        std::count_if(m_rows.begin(), m_rows.end(), [](const Row& row) { return row.status == "pass"; }));
    std::string html =
        "<nav id=\"index\" aria-labelledby=\"index-h\">\n<h2 id=\"index-h\">Members, worst first</h2>\n<p>" +
        std::to_string(m_rows.size()) + " members: " + std::to_string(passing) + " pass, " +
        std::to_string(m_rows.size() - passing) +
        " do not.</p>\n<table class=\"wide\">\n<thead><tr><th scope=\"col\" class=\"n\">No.</th>";
    for (const char* name : {"Member", "Section", "Grade", "Result"})
        html += "<th scope=\"col\">" + std::string(name) + "</th>";
    html += "<th scope=\"col\" class=\"n\">Utilisation</th><th scope=\"col\">Governed by</th></tr></thead>\n<tbody>\n";
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        html += IndexRow(m_rows[i], i + 1);
    return html + "</tbody></table>\n</nav>\n";
}

std::string HtmlReport::Remarks() const
{
    if (m_remarks.empty()) return {};
    std::string html =
        "<section aria-labelledby=\"remarks-h\">\n<h2 id=\"remarks-h\">Remarks on the input files</h2>\n<ul>\n";
    for (const std::string& remark : m_remarks)
        html += "<li>" + EscapedHtml(remark) + "</li>\n";
    return html + "</ul>\n</section>\n";
}

} // namespace Keltrix::Host
