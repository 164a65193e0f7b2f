#pragma once

#include <string>
#include <string_view>

#ifdef KELTRIX_HOST_WITH_STATICS
#include "check/CheckedBeam.h"
#endif
#include "check/CheckedMember.h"
#include "text/JsonFwd.h"

namespace Keltrix::Host {

/// Adds to a file what the design code rejects in the members that reading accepts.
void AddCodeDefects(MemberFile& file, const CodeChoice& choice);

/// What reading and, where it was asked, the design code found in a file, as `ksteel validate --format json` writes it.
Json JsonOf(const MemberFile& file);

#ifdef KELTRIX_HOST_WITH_STATICS
/// A beam with what the design code, where one is asked for, rejects in its members. Without one the default code gives the modulus and the
/// combinations.
Beam ReadAndJudge(const std::string& name, std::string_view bytes, const ReadingOptions& reading,
                  const CodeChoice& choice);

/// How many of the defects of a beam have a severity.
std::size_t DefectCount(const Beam& beam, Severity severity);

Json JsonOf(const Beam& beam);
#endif

} // namespace Keltrix::Host
