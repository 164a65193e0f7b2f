#pragma once

#include <vector>

#include "beamfile/BeamMembers.h"
#include "check/CheckedMember.h"

namespace Keltrix::Host {

/// A beam with its members as the files that they are.
struct Beam {
    BeamFile file;
    BeamMembers made;
    std::vector<MemberFile> members; ///< one for each ultimate combination
};

/// Reads a beam and makes its members. What is wrong with it is among the defects of `made`; with errors there are no members. Where every
/// warning is an error, warnings of the beam are. Throws BadInput for bytes that are no text.
/// Combinations that the file leaves open are those that go with the code and its annex.
Beam ReadBeam(const std::string& name, std::string_view bytes, const ReadingOptions& reading, const CodeChoice& choice);

/// The same for a beam that was read already, such as one with another section.
Beam MakeBeam(BeamFile file, const ReadingOptions& reading, const CodeChoice& choice);

/// Whether the code of a warning is that of one of the beam, which each of its members has, too.
bool IsOfTheBeam(const std::string& code);

/// The defects of a beam as the warnings of its sheet, the errors left out.
std::vector<MemberWarning> WarningsOf(const Beam& beam);

/// Checks all members of a beam as one: the envelope of its combinations with its deflections. Each warning of the members stands once,
/// with the first combination that has it, or in the worst one where it has a utilisation. With `withText` the text is that of the combination with the largest utilisation, with `withSteps`
/// each finding has the steps of the combination that it comes from. Throws BadMember, with the place in the beam file, where the design code rejects what all members have.
CheckedMember CheckBeam(const Beam& beam, const CodeChoice& choice, bool withText, bool withSteps = false);

} // namespace Keltrix::Host
