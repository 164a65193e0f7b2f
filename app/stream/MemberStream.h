#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "io/Console.h"
#include "io/Failure.h"
#include "memberfile/MemberFile.h"
#include "stream/PieceSource.h"

namespace Keltrix::Design {
class DesignCode;
}
namespace Keltrix::Host {
struct Beam;
}

namespace Keltrix::App {

/// A member, or a whole file, that cannot be used.
struct Refusal {
    std::string file;
    LineNumber line = 0; ///< at which the member begins; 0 where it is the file
    std::string title;
    std::vector<std::string> reasons; ///< messages, each with its place
    std::vector<MemberWarning> warnings = {};
};

/// What becomes of beam files among the member files.
enum class BeamReading {
    Whole,                 ///< a beam is one thing
    Members,               ///< the members of its combinations are members by themselves
    MembersWithDeflections ///< likewise, and what came of the beam's deflections, which have no place in them, is told
};

/// What a stream brings next: one of the four.
struct StreamMember {
    std::shared_ptr<const MemberFile> file; ///< with the member at `place`
    std::size_t place = 0;
    std::shared_ptr<const Beam> beam;
    std::optional<Refusal> refusal;
    std::string remark; ///< about what follows

    /// Of a refusal or a remark.
    ExitCode code = EXIT_FINE;
    std::vector<std::string> messages = {}; ///< to be told before it is used
};

/// The members of files, one after another and in the memory of one, beam files included. What is wrong with them, and what reading
/// loses, goes to the console's errors as they come; a file or member that cannot be used does not keep the others from it.
class MemberStream {
public:
    /// The members of `source`. The design code gives beams the modulus of elasticity and the standard of the combinations; without one the default
    /// code does.
    MemberStream(PieceSource& source, const ReadingOptions& reading, const Console& console,
                 BeamReading beams = BeamReading::Members, const Design::DesignCode* code = nullptr);
    /// Those of files.
    MemberStream(const std::vector<std::string>& files, const ReadingOptions& reading, const Console& console,
                 BeamReading beams = BeamReading::Members, const Design::DesignCode* code = nullptr);

    /// The next member, beam, refusal or remark; nothing at the end. Its messages are told by then.
    std::optional<StreamMember> Next();

    /// The exit code of what `work` does with a member or a beam. Where it throws BadInput, or memory ends, the member becomes a refusal, which is
    /// told. Refusals and remarks have their own exit codes, and `work` is not called.
    ExitCode Use(StreamMember& member, const std::function<ExitCode()>& work);

    /// The worst exit code of all that was used so far.
    ExitCode Worst() const { return m_worst; }

private:
    void Open(const InputPiece& input);
    void OpenMembers(std::shared_ptr<const MemberFile> file);
    void OpenBeam(const std::string& name, const MemberPiece& piece);
    void Refuse(Refusal refusal, bool isTold = false);

    std::unique_ptr<PieceSource> m_files; // where the source is its own
    PieceSource& m_source;
    const ReadingOptions m_reading;
    const Console& m_console;
    const BeamReading m_beams;
    const Design::DesignCode* const m_code;
    std::deque<StreamMember> m_ready;
    ExitCode m_worst = EXIT_FINE;
};

} // namespace Keltrix::App
