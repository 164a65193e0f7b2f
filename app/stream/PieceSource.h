#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "stream/MemberPieceReader.h"

namespace Keltrix::App {

struct Console;

/// A piece of a file, or why the file has no more.
struct InputPiece {
    std::string name; ///< how messages call the file
    MemberPiece piece;
    std::string failure; ///< empty: there is a piece
};

/// Where the pieces of member files come from.
class PieceSource {
public:
    virtual ~PieceSource() = default;
    /// The next piece; nothing at the end.
    virtual std::optional<InputPiece> Next() = 0;
};

/// The pieces of files, one file after another.
class FilePieces : public PieceSource {
public:
    FilePieces(std::vector<std::string> files, const Console& console) : m_files(std::move(files)), m_console(console)
    {}

    /// The console hears of a file that was read to its end once its last piece was used.
    std::optional<InputPiece> Next() override;

private:
    void Read();
    void Close();

    const std::vector<std::string> m_files;
    const Console& m_console;
    std::size_t m_next = 0; // the file after the one that is being read
    std::string m_name;
    std::unique_ptr<MemberPieceReader> m_reader;
    std::unique_ptr<Sha256> m_sum;
    std::deque<InputPiece> m_pieces;
    bool m_isRead = false; // the file of the reader
};

} // namespace Keltrix::App
