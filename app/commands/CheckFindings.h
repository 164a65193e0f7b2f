#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "check/CheckedMember.h"
#include "commands/CodeCommands.h"
#include "stream/EachMember.h"

namespace Keltrix::App {

/// What the check of members puts out, one piece after another in the order of the input.
struct OutputPiece {
    enum Kind : char {
        Member,  ///< a member that was checked
        Refused, ///< a member or file that could not be
        Message  ///< said about the input
    };
    Kind kind = Message;
    ExitCode code = EXIT_FINE;
    double utilisation = 0.0; ///< of a member
    /// A message, or what the output shows of the member: rendered text, table row, JSON. Gone after the sink has seen it.
    std::string_view text;
};
using OutputPieceSink = std::function<void(const OutputPiece&)>;

/// JSON line for a member or file that could not be used.
std::string RefusalLine(const Refusal& refusal);

/// Hands over what the output shows of a checked member, and returns its exit code.
ExitCode PutMember(const CheckedMember& checked, const CheckOptions& options, const OutputPieceSink& sink);

/// A member as the options want it to be checked; what looks wrong in its findings goes to the console's errors. Throws
/// BadInput as CheckMember does.
CheckedMember CheckAsAsked(const MemberFile& file, std::size_t i, const CheckOptions& options, const Console& console);

/// The same for a beam: the envelope of its combinations.
CheckedMember CheckAsAsked(const Beam& beam, const CheckOptions& options, const Console& console);

/// Throws BadInput, which names the difference, where a member is no load case of the one in `first`.
void RequireLoadCase(const CheckedMember& first, const CheckedMember& other);

/// Load cases of one member merged into it. Throws BadInput where they are not those of one.
CheckedMember OneEnvelope(std::vector<CheckedMember> cases);

/// What the options want to become of beams: `use`, or each combination by itself, with what `tell` takes of the deflections.
BeamUse BeamUseOf(const CheckOptions& options, std::function<ExitCode(const Beam&)> use,
                  std::function<void(ExitCode, const std::string&)> tell);

/// Checks files and pieces of files, and hands over the findings as they come.
class CheckLoop {
public:
    CheckLoop(const CheckOptions& options, std::istream& standardInput, OutputPieceSink sink);
    CheckLoop(const CheckLoop&) = delete;
    CheckLoop& operator=(const CheckLoop&) = delete;

    void UseFile(const std::string& path) { m_loop.UseFile(path); }
    void UsePiece(const std::string& name, const MemberPiece& piece) { m_loop.UsePiece(name, piece); }
    void Refuse(const Refusal& refusal) { m_loop.Refuse(refusal); }

private:
    const CheckOptions& m_options;
    OutputPieceSink m_sink;
    Console m_console;
    MemberLoop m_loop;
};

} // namespace Keltrix::App
