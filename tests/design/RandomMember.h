#pragma once

// The members of the test kit under a shorter name.

#include "keltrix/testkit/TestMember.h"

namespace DesignTest {

using namespace Keltrix;
using Steel::CMemberPoint;
using Steel::CRestraint;
using Steel::CSubSpan;
using Member = TestKit::TestMember;
using TestKit::AddPoint;
using TestKit::AddSubSpan;
using TestKit::Divided;
using TestKit::Mirrored;
using TestKit::RandomMember;
using TestKit::Restraint;
using TestKit::Scaled;

} // namespace DesignTest
