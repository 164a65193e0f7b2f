#include "stream/MemberPieceReader.h"

#include <array>

namespace Keltrix::App {

MemberPieceReader::MemberPieceReader(const std::string& path, std::istream& standardInput, Sha256* sum) :
    m_input(path, standardInput), m_sum(sum)
{}

bool MemberPieceReader::Read(std::vector<MemberPiece>& pieces)
{
    std::array<char, 1 << 16> block;
    const std::size_t got = m_input.ReadSome(block.data(), block.size());
    m_bytes += got;
    if (m_sum) m_sum->Add({block.data(), got});
    if (got > 0) {
        m_cutter.Add({block.data(), got});
        while (auto piece = m_cutter.Next())
            Append(pieces, std::move(*piece));
        return true;
    }
    if (m_bytes == 0) throw BadInput(Name() + ": is empty");
    if (auto piece = m_cutter.Rest()) Append(pieces, std::move(*piece));
    if (m_first) {
        m_first->isWhole = true;
        pieces.push_back(std::move(*m_first));
    }
    return false;
}

void MemberPieceReader::Append(std::vector<MemberPiece>& pieces, MemberPiece piece)
{
    if (m_first) {
        pieces.push_back(std::move(*m_first));
        m_first.reset();
    } else if (!m_hasAppended && m_input.IsRegularFile()) {
        m_first = std::move(piece);
        m_hasAppended = true;
        return;
    }
    m_hasAppended = true;
    pieces.push_back(std::move(piece));
}

} // namespace Keltrix::App
