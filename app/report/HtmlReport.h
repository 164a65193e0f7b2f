#pragma once

#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Output.h"
#include "report/MemberSheet.h"

namespace Keltrix::App {

/// One HTML document with the sheets of any number of members, worst first, and an index of them. It needs nothing but
/// itself: no network, no script. Sheets wait in a temporary file of the system's, so that memory holds one of them at a time.
class HtmlReport {
public:
    explicit HtmlReport(TitleBlock block);

    void Add(const CheckedMember& checked);
    /// What was said about the files while they were read; it belongs to the report too.
    void AddRemark(std::string message) { m_remarks.push_back(std::move(message)); }
    /// A file that was read to its end, and the SHA-256 of its bytes.
    void AddInput(const std::string& name, const std::string& sha256) { m_inputs[name] = sha256; }
    std::size_t MemberCount() const { return m_rows.size(); }

    void Write(const TextSink& put);

private:
    // A line of the index, and where its sheet waits.
    struct Row {
        std::string id;
        std::string file;
        std::string title;
        std::string section;
        std::string grade;
        std::string status;
        std::string warnings; // how many
        std::string governing;
        double utilisation;
        std::fpos_t start;
        std::size_t length;
    };

    std::string Head() const;
    std::string Index() const;
    std::string IndexRow(const Row& row, std::size_t number) const;
    std::string Remarks() const;
    std::string Inputs() const;
    std::string PageFooter(const std::string& file) const;
    void PutSheet(const Row& row, const TextSink& put) const;

    TitleBlock m_block;
    std::vector<Row> m_rows;
    std::vector<std::string> m_remarks;
    std::map<std::string, std::string> m_inputs; // SHA-256 by name
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> m_sheets;
};

} // namespace Keltrix::App
