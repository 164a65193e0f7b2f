#include "stream/PieceSource.h"

#include "io/Console.h"

namespace Keltrix::App {

std::optional<InputPiece> FilePieces::Next()
{
    while (m_pieces.empty()) {
        if (m_isRead) Close();
        if (!m_reader && m_next == m_files.size()) return std::nullopt;
        try {
            Read();
        } catch (const BadInput& failure) {
            m_reader.reset();
            InputPiece& none = m_pieces.emplace_back();
            none.name = m_name;
            none.failure = failure.what();
        }
    }
    InputPiece piece = std::move(m_pieces.front());
    m_pieces.pop_front();
    return piece;
}

void FilePieces::Read()
{
    if (!m_reader) {
        const std::string& path = m_files[m_next++];
        m_name = NameOfInput(path);
        m_sum = m_console.wasRead ? std::make_unique<Sha256>() : nullptr;
        m_reader = std::make_unique<MemberPieceReader>(path, m_console.in, m_sum.get());
    }
    std::vector<MemberPiece> pieces;
    m_isRead = !m_reader->Read(pieces);
    for (MemberPiece& piece : pieces)
        m_pieces.push_back({m_name, std::move(piece), {}});
}

void FilePieces::Close()
{
    m_isRead = false;
    m_reader.reset();
    if (m_sum) m_console.wasRead(m_name, m_sum->Digest());
}

} // namespace Keltrix::App
