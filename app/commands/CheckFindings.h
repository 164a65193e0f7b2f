#pragma once

#include <deque>
#include <optional>
#include <string>

#include "check/CheckedMember.h"
#include "commands/CodeCommands.h"
#include "stream/MemberStream.h"

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
    std::string text;         ///< a message, or what the output shows of the member: rendered text, table row, JSON
};

/// The findings of members as they come.
class FindingsStream {
public:
    virtual ~FindingsStream() = default;
    /// The next piece; nothing at the end.
    virtual std::optional<OutputPiece> Next() = 0;
    /// Whether the next piece may have to be waited for.
    virtual bool IsDrained() const = 0;
};

/// JSON line for a member or file that could not be used.
std::string RefusalLine(const Refusal& refusal);

/// What the output shows of a checked member.
OutputPiece PieceOf(const CheckedMember& checked, const CheckOptions& options);

/// What it shows of a refusal.
OutputPiece PieceOf(const Refusal& refusal, const CheckOptions& options);

/// A member or a beam of a stream, checked. Throws BadInput as CheckMember and CheckBeam do.
CheckedMember CheckOne(const StreamMember& member, const CodeChoice& choice, bool withText, bool withSteps = false);

/// A member as the options want it to be checked, or a beam: the envelope of its combinations. What looks wrong in its findings goes to the
/// console's errors. Throws BadInput as CheckMember does.
CheckedMember CheckAsAsked(const StreamMember& member, const CheckOptions& options, const Console& console);

/// Throws BadInput, which names the difference, where a member is no load case of the one in `first`.
void RequireLoadCase(const CheckedMember& first, const CheckedMember& other);

/// Load cases of one member merged into it. Throws BadInput where they are not those of one.
CheckedMember OneEnvelope(std::vector<CheckedMember> cases);

/// How beams are read where `combinations` wants each of theirs by itself.
inline BeamReading BeamsAs(bool combinations)
{
    return combinations ? BeamReading::MembersWithDeflections : BeamReading::Whole;
}

/// The findings of pieces of files, checked in this process.
class MemberFindings : public FindingsStream {
public:
    MemberFindings(const CheckOptions& options, PieceSource& pieces, std::istream& standardInput);
    MemberFindings(const MemberFindings&) = delete;
    MemberFindings& operator=(const MemberFindings&) = delete;

    std::optional<OutputPiece> Next() override;
    bool IsDrained() const override { return m_ready.empty(); }

private:
    void Check(StreamMember& member);

    const CheckOptions& m_options;
    std::deque<OutputPiece> m_ready;
    Console m_console;
    MemberStream m_members;
};

} // namespace Keltrix::App
