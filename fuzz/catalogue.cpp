// Catalogue files of a host: all or nothing, every fault has its place, and what was taken is found again.
#include "Fuzz.h"
#include "keltrix/platform/KxData.h"
#include "keltrix/platform/KxUtil.h"

using namespace Keltrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CSectDB database;
    const std::string_view csv = Fuzz::Bytes(data, size);
    const std::vector<CatalogueError> errors = database.AddCsv(csv);
    for (const CatalogueError& error : errors)
        Fuzz::Require(!error.message.IsEmpty() && error.line >= 0 && error.column >= 0,
                      "a fault has a text and a place", error.message);
    if (!errors.empty()) {
        Fuzz::Require(database.Entries().empty(), "a faulty file adds nothing", errors.front().message);
        return 0;
    }
    const std::size_t rows = database.Entries().size();
    for (const CSectDB::Entry& entry : database.Entries()) {
        Fuzz::Require(database.Find(entry.designation) == &entry, "a row is found by its designation",
                      entry.designation);
        CSecDB geometry(CString(), &database);
        Fuzz::Require(geometry.SetUpFromDesc(entry.designation), "a row's designation sets up a section",
                      entry.designation);
        Fuzz::Require(geometry.Shape() == entry.shape, "the section has the row's shape", entry.designation);
        Fuzz::Require(geometry.Dimension(0.0, CSecGeom::DEPTH) == entry.depth, "the section has the row's depth",
                      entry.designation);
    }
    if (rows > 0) {
        Fuzz::Require(!database.AddCsv(csv).empty(), "the same rows are refused a second time");
        Fuzz::Require(database.Entries().size() == rows, "and then nothing is added");
    }
    return 0;
}
