#include "commands/CheckJobs.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <memory>
#include <type_traits>

#include "stream/MemberPieceReader.h"
#include "stream/Workers.h"

namespace Keltrix::App {

namespace {

// What a worker gets at once: enough members that the handing over does not count, few enough that all workers end at
// about the same time.
constexpr std::size_t REQUEST_BYTES = std::size_t(1) << 16;

// --- Requests and replies as bytes, between copies of one process ---

class Packer {
public:
    explicit Packer(std::string& bytes) : m_bytes(bytes) {}

    template <class Number>
    void Put(Number number)
    {
        static_assert(std::is_trivially_copyable_v<Number>);
        m_bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
    }
    void PutText(std::string_view text)
    {
        Put(text.size());
        m_bytes += text;
    }

private:
    std::string& m_bytes;
};

class Unpacker {
public:
    explicit Unpacker(std::string_view bytes) : m_bytes(bytes) {}

    bool IsAtEnd() const { return m_bytes.empty(); }
    template <class Number>
    Number Get()
    {
        Number number;
        std::memcpy(&number, m_bytes.data(), sizeof number);
        m_bytes.remove_prefix(sizeof number);
        return number;
    }
    std::string_view GetText()
    {
        const auto size = Get<std::size_t>();
        const std::string_view text = m_bytes.substr(0, size);
        m_bytes.remove_prefix(size);
        return text;
    }

private:
    std::string_view m_bytes;
};

// One thing to check, or to tell where nothing can be checked. A request is a sequence of them.
struct Item {
    enum Kind : char { File, Piece, Failure } kind = File;
    std::size_t file = 0; // among the files of the command line
    MemberPiece piece;
    std::string message; // of a failure
};

void Pack(Packer& packer, const Item& item)
{
    packer.Put(item.kind);
    packer.Put(item.file);
    packer.PutText(item.piece.bytes);
    packer.Put(item.piece.start);
    packer.Put(item.piece.isBehindEnd);
    packer.Put(item.piece.isWhole);
    packer.Put(item.piece.isTooLarge);
    packer.PutText(item.message);
}

Item UnpackItem(Unpacker& unpacker)
{
    Item item;
    item.kind = unpacker.Get<Item::Kind>();
    item.file = unpacker.Get<std::size_t>();
    item.piece.bytes = unpacker.GetText();
    item.piece.start = unpacker.Get<FilePlace>();
    item.piece.isBehindEnd = unpacker.Get<bool>();
    item.piece.isWhole = unpacker.Get<bool>();
    item.piece.isTooLarge = unpacker.Get<bool>();
    item.message = unpacker.GetText();
    return item;
}

void Pack(Packer& packer, const OutputPiece& piece)
{
    packer.Put(piece.kind);
    packer.Put(piece.code);
    packer.Put(piece.utilisation);
    packer.PutText(piece.text);
}

OutputPiece UnpackOutputPiece(Unpacker& unpacker)
{
    OutputPiece piece;
    piece.kind = unpacker.Get<OutputPiece::Kind>();
    piece.code = unpacker.Get<ExitCode>();
    piece.utilisation = unpacker.Get<double>();
    piece.text = std::string(unpacker.GetText());
    return piece;
}

// --- The input in requests ---

// The names of small files, which workers read themselves; the pieces of large ones and of streams.
class InputSource : public RequestSource {
public:
    InputSource(const std::vector<std::string>& files, std::istream& standardInput) :
        m_files(files), m_standardInput(standardInput)
    {}

    Answer Next(std::string& request, bool mayWait) override
    {
        request.clear();
        Packer packer(request);
        std::size_t bytes = 0;
        while (bytes < REQUEST_BYTES) {
            if (!m_reader && m_next == m_files.size()) break;
            if (!m_reader) {
                const std::size_t size = SizeOfSmallFile(m_files[m_next]);
                if (size > 0) {
                    Item item;
                    item.file = m_next++;
                    Pack(packer, item);
                    bytes += size;
                    continue;
                }
                if (!Open(packer, bytes)) continue;
            }
            if (IsToBeWaitedFor()) {
                if (bytes > 0) break;
                if (!mayWait) return Answer::Later;
            }
            Read(packer, bytes);
        }
        return bytes > 0 ? Answer::Request : Answer::End;
    }

    int Descriptor() const override { return STANDARD_INPUT_DESCRIPTOR; }

    std::vector<std::string> Parts(std::string_view request) const override
    {
        std::vector<std::string> parts;
        for (Unpacker unpacker(request); !unpacker.IsAtEnd();) {
            Packer packer(parts.emplace_back());
            Pack(packer, UnpackItem(unpacker));
        }
        return parts;
    }

private:
    static constexpr int STANDARD_INPUT_DESCRIPTOR = 0;

    // 0 for all that is to be read here: large files, streams, and what is no file.
    static std::size_t SizeOfSmallFile(const std::string& path)
    {
        if (path == "-") return 0;
        std::error_code error;
        // An error for all that is no regular file.
        const std::uintmax_t size = std::filesystem::file_size(FilePath(path), error);
        return !error && size <= REQUEST_BYTES ? std::max<std::size_t>(static_cast<std::size_t>(size), 1) : 0;
    }

    bool Open(Packer& packer, std::size_t& bytes)
    {
        try {
            m_reader = std::make_unique<MemberPieceReader>(m_files[m_next], m_standardInput);
            return true;
        } catch (const BadInput& failure) {
            Fail(packer, bytes, failure);
            return false;
        }
    }

    bool IsToBeWaitedFor() const
    {
        return m_files[m_next] == "-" && m_standardInput.rdbuf()->in_avail() <= 0 &&
               !IsReadable(STANDARD_INPUT_DESCRIPTOR);
    }

    void Read(Packer& packer, std::size_t& bytes)
    {
        std::vector<MemberPiece> pieces;
        try {
            const bool goesOn = m_reader->Read(pieces);
            for (MemberPiece& piece : pieces) {
                bytes += piece.bytes.size() + 1;
                Item item;
                item.kind = Item::Piece;
                item.file = m_next;
                item.piece = std::move(piece);
                Pack(packer, item);
            }
            if (goesOn) return;
            m_reader.reset();
            ++m_next;
        } catch (const BadInput& failure) {
            Fail(packer, bytes, failure);
        }
    }

    void Fail(Packer& packer, std::size_t& bytes, const BadInput& failure)
    {
        Item item;
        item.kind = Item::Failure;
        item.file = m_next;
        item.message = failure.what();
        Pack(packer, item);
        ++bytes;
        m_reader.reset();
        ++m_next;
    }

    const std::vector<std::string>& m_files;
    std::istream& m_standardInput;
    std::size_t m_next = 0; // the file that is being read, or the next one
    std::unique_ptr<MemberPieceReader> m_reader;
};

// --- A worker's part: the pieces of a request, and their findings ---

class RequestPieces : public PieceSource {
public:
    RequestPieces(std::string_view request, const std::vector<std::string>& files, const Console& console) :
        m_unpacker(request), m_files(files), m_console(console)
    {}

    std::optional<InputPiece> Next() override
    {
        for (;;) {
            if (m_file) {
                if (auto piece = m_file->Next()) return piece;
                m_file.reset();
            }
            if (m_unpacker.IsAtEnd()) return std::nullopt;
            Item item = UnpackItem(m_unpacker);
            const std::string& path = m_files[item.file];
            if (item.kind != Item::File) return InputPiece{NameOfInput(path), std::move(item.piece), item.message};
            m_file.emplace(std::vector<std::string>{path}, m_console);
        }
    }

private:
    Unpacker m_unpacker;
    const std::vector<std::string>& m_files;
    const Console& m_console;
    std::optional<FilePieces> m_file; // that is being read
};

void MakeReply(std::string_view request, std::string& reply, const CheckOptions& options, std::istream& standardInput)
{
    const Console silent{standardInput, {}, {}};
    RequestPieces pieces(request, options.files, silent);
    MemberFindings findings(options, pieces, standardInput);
    Packer packer(reply);
    while (const auto piece = findings.Next())
        Pack(packer, *piece);
}

// --- The findings from replies ---

class WorkerFindings : public FindingsStream {
public:
    WorkerFindings(const CheckOptions& options, int jobs, std::istream& standardInput) :
        m_options(options), m_source(options.files, standardInput),
        m_workers(jobs, m_source, [&options, &standardInput](std::string_view request, std::string& reply) {
            MakeReply(request, reply, options, standardInput);
        })
    {}

    std::optional<OutputPiece> Next() override
    {
        for (;;) {
            if (!m_lost.empty()) {
                OutputPiece piece = std::move(m_lost.front());
                m_lost.pop_front();
                return piece;
            }
            if (!m_unpacker.IsAtEnd()) return UnpackOutputPiece(m_unpacker);
            m_reply = m_workers.Next();
            if (!m_reply) return std::nullopt;
            if (m_reply->kind == WorkerReply::Told)
                return OutputPiece{OutputPiece::Message, EXIT_FINE, 0.0, m_reply->how};
            if (m_reply->kind == WorkerReply::Lost) Lose();
            m_unpacker = Unpacker(m_reply->Text());
        }
    }

    bool IsDrained() const override { return m_lost.empty() && m_unpacker.IsAtEnd(); }

private:
    void Lose()
    {
        Unpacker unpacker(m_reply->request);
        const Item item = UnpackItem(unpacker);
        const std::string name = NameOfInput(m_options.files[item.file]);
        const LineNumber line = item.kind == Item::Piece ? item.piece.FirstLine() : 0;
        const std::string place = line > 0 ? name + ':' + std::to_string(line) : name;
        const std::string reason = place + ": not checked, the process that was at work on it was " + m_reply->how;
        m_lost.push_back({OutputPiece::Message, EXIT_FINE, 0.0, reason});
        m_lost.push_back(PieceOf(Refusal{name, line, {}, {reason}}, m_options));
    }

    const CheckOptions& m_options;
    InputSource m_source;
    Workers m_workers;
    std::optional<WorkerReply> m_reply;
    Unpacker m_unpacker{{}}; // of the reply
    std::deque<OutputPiece> m_lost;
};

} // namespace

std::unique_ptr<FindingsStream> FindingsOfWorkers(const CheckOptions& options, int jobs, std::istream& standardInput)
{
    return std::make_unique<WorkerFindings>(options, jobs, standardInput);
}

} // namespace Keltrix::App
