#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "io/Input.h"
#include "memberfile/MemberPieces.h"
#include "text/Sha256.h"

namespace Keltrix::App {

/// Reads a member file, or the standard input, piece by piece.
class MemberPieceReader {
public:
    /// Throws BadInput as InputStream does. `sum`, where there is one, gets every byte that is read.
    MemberPieceReader(const std::string& path, std::istream& standardInput, Sha256* sum = nullptr);

    const std::string& Name() const { return m_input.Name(); }
    /// Waits for input once, and appends the pieces that it completes, if any. False at the end. Throws BadInput where
    /// reading fails and for an empty file.
    bool Read(std::vector<MemberPiece>& pieces);

private:
    void Append(std::vector<MemberPiece>& pieces, MemberPiece piece);

    InputStream m_input;
    Sha256* m_sum;
    MemberCutter m_cutter;
    std::optional<MemberPiece> m_first; // of a regular file: kept until it is known whether there is another one
    std::size_t m_bytes = 0;
    bool m_hasAppended = false;
};

} // namespace Keltrix::App
