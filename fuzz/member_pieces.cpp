// Cutting a member file into pieces: however the bytes come, and whatever they are, the pieces are the same, nothing but blank
// lines is left out, and they hold the members and faults of the whole.
//
// Sections that the catalogue does not know are replaced by one that it does: for them reading searches the whole catalogue
// for similar names, which takes thirty times as long as all the rest and has nothing to do with pieces.
#include "app/PieceFindings.h"

#include <sstream>

#include "Fuzz.h"
#include "io/Failure.h"
#include "io/Input.h"
#include "keltrix/platform/KxUtil.h"

using namespace Keltrix;
using namespace Keltrix::App;

namespace {

// Nothing where the text cannot be decoded.
std::optional<Trial::PieceFindings> OfWhole(std::string_view bytes)
{
    std::istringstream in{std::string(bytes)};
    Trial::PieceFindings findings;
    try {
        findings.Add(MemberFile(ReadText("-", in)));
    } catch (const BadInput&) {
        return std::nullopt;
    }
    return findings;
}

std::optional<Trial::PieceFindings> OfPieces(const std::vector<MemberPiece>& pieces)
{
    Trial::PieceFindings findings;
    try {
        for (const MemberPiece& piece : pieces)
            findings.Add(MemberFile("standard input", piece));
    } catch (const BadInput&) {
        return std::nullopt;
    }
    return findings;
}

constexpr std::string_view KNOWN_SECTION = "SECTION,UB 457x191x67";

bool IsKnown(std::string_view description)
{
    return CSecDB(CString(), CSectDB::GetDatabase()).SetUpFromDesc(Fuzz::Text(description));
}

std::string WithKnownSections(std::string_view bytes)
{
    constexpr std::string_view keyword = "SECTION,";
    std::string text;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size() - 1) + 1;
        std::string_view line = bytes.substr(0, end);
        bytes.remove_prefix(end);
        if (line.starts_with(keyword)) {
            const std::size_t type = std::min(line.find_first_of(",\r\n", keyword.size()), line.size());
            text += IsKnown(line.substr(keyword.size(), type - keyword.size())) ? line.substr(0, type) : KNOWN_SECTION;
            line.remove_prefix(type);
        }
        text += line;
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2) return 0;
    const std::size_t step = data[0] % 64 + 1;
    const std::string text = WithKnownSections(Fuzz::Bytes(data, size).substr(1));
    const std::string_view bytes = text;
    const CString shown = Fuzz::Text(bytes);

    const std::vector<MemberPiece> pieces = Trial::CutInPieces(bytes);
    const std::vector<MemberPiece> stepped = Trial::CutInPieces(bytes, step);
    Fuzz::Require(pieces.size() == stepped.size(), "the pieces do not depend on how the bytes come", shown);
    std::size_t at = 0;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        Fuzz::Require(pieces[i].bytes == stepped[i].bytes && pieces[i].start.lines == stepped[i].start.lines,
                      "the pieces do not depend on how the bytes come", shown);
        Fuzz::Require(pieces[i].start.bytes == at && bytes.substr(at).starts_with(pieces[i].bytes),
                      "pieces follow one another", shown);
        at += pieces[i].bytes.size();
    }
    Fuzz::Require(bytes.find_first_not_of(" \t\r\n", at) == std::string_view::npos, "only blank lines are left out",
                  shown);

    // A list of defects has an end, which a whole file reaches sooner.
    const std::optional<Trial::PieceFindings> whole = OfWhole(bytes);
    const std::optional<Trial::PieceFindings> pieced = OfPieces(pieces);
    constexpr std::size_t listed = 900;
    if (!whole || !pieced || pieced->defects.size() > listed) return 0;
    // A mark is dropped in front of a piece, and is a strange character elsewhere.
    if (bytes.find("\xEF\xBB\xBF") != std::string_view::npos) return 0;
    Fuzz::Require(*whole == *pieced, "the pieces hold what the whole holds", shown);
    return 0;
}
