#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "io/Failure.h"
#include "memberfile/MemberFile.h"
#include "memberfile/MemberPieces.h"
#include "text/Text.h"

namespace Keltrix::App::Trial {

/// What was found in a file, wherever it was cut.
struct PieceFindings {
    std::vector<std::string> members; ///< line, state and text of each
    std::vector<std::string> defects;

    void Add(const MemberFile& file)
    {
        for (std::size_t i = 0; i < file.MemberCount(); ++i) {
            const MemberText& member = file.Member(i);
            members.push_back(std::to_string(member.firstLine) + (member.isRefused ? " refused " : " ") +
                              (member.hasErrors ? "errors " : "") + Utf8(member.text));
        }
        for (const Defect& defect : file.Check().defects) {
            // Lines between members are reported once up to each END line.
            if (defect.expected != "nothing, or the TITLE line of another member") defects.push_back(defect.Text("f"));
        }
    }

    friend bool operator==(const PieceFindings&, const PieceFindings&) = default;
};

/// The pieces of a text that is handed over `step` bytes at a time.
inline std::vector<MemberPiece> CutInPieces(std::string_view text, std::size_t step = std::string_view::npos)
{
    MemberCutter cutter;
    std::vector<MemberPiece> pieces;
    for (std::size_t at = 0; at < text.size(); at += step < text.size() ? step : text.size()) {
        cutter.Add(text.substr(at, step));
        while (auto piece = cutter.Next())
            pieces.push_back(std::move(*piece));
    }
    if (auto rest = cutter.Rest()) pieces.push_back(std::move(*rest));
    return pieces;
}

} // namespace Keltrix::App::Trial
