#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "report/MemberSheet.h"
#include "text/TextSink.h"

namespace Keltrix::Host {

/// Where the sheets of a report wait until it is written. A host with many members keeps them outside of memory.
class SheetStore {
public:
    SheetStore() = default;
    SheetStore(const SheetStore&) = delete;
    SheetStore& operator=(const SheetStore&) = delete;
    virtual ~SheetStore() = default;

    virtual void Add(std::string_view sheet) = 0;
    /// The sheet that was added as number i, counted from 0.
    virtual std::string Sheet(std::size_t i) = 0;
};

/// One HTML document with the sheets of any number of members, worst first, and an index of them. It needs nothing but
/// itself: no network, no script.
class HtmlReport {
public:
    /// The sheets wait in memory.
    explicit HtmlReport(TitleBlock block);
    HtmlReport(TitleBlock block, std::unique_ptr<SheetStore> sheets);

    /// `loads` makes the part about the loads of a beam, for its sheet.
    void Add(const CheckedMember& checked, const LoadPart& loads = {});
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
        std::size_t sheet; // its number in the store
    };

    std::string Head() const;
    std::string Index() const;
    std::string IndexRow(const Row& row, std::size_t number) const;
    std::string Remarks() const;
    std::string Inputs() const;
    std::string PageFooter(const std::string& file) const;

    TitleBlock m_block;
    std::vector<Row> m_rows;
    std::vector<std::string> m_remarks;
    std::map<std::string, std::string> m_inputs; // SHA-256 by name
    std::unique_ptr<SheetStore> m_sheets;
};

} // namespace Keltrix::Host
