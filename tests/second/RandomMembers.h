#pragma once

#include <cstdint>
#include <string>

#include "Second.h"

namespace Second {

enum class Family { RolledI, PlateI, UnequalI, Channel, Tee, Angle, Hollow, Tube };
const char* FamilyName(Family family);

/// A random member: what the second calculation reads, and the same as the text of a member file.
struct RandomMember {
    Member member;
    std::string text;
};
RandomMember MakeRandomMember(Family family, std::uint64_t seed);

} // namespace Second
