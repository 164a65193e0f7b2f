#include "text/Sha256.h"

#include <gtest/gtest.h>

namespace Keltrix::Host {
namespace {

std::string DigestOf(std::string_view bytes)
{
    Sha256 sum;
    sum.Add(bytes);
    return sum.Digest();
}

// The examples of FIPS 180-4 and of NIST's example values; the empty text and one million "a" are in the same set.
TEST(Sha256, GivesThePublishedDigests)
{
    EXPECT_EQ(DigestOf(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(DigestOf("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(DigestOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(DigestOf(std::string(1000000, 'a')), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, IsTheSameHoweverTheBytesArrive)
{
    std::string bytes;
    for (int i = 0; i < 300; ++i)
        bytes += static_cast<char>(i);
    for (std::size_t length = 0; length <= bytes.size(); ++length) {
        const std::string_view text = std::string_view(bytes).substr(0, length);
        Sha256 pieces;
        for (std::size_t i = 0; i < length; i += 7)
            pieces.Add(text.substr(i, 7));
        EXPECT_EQ(pieces.Digest(), DigestOf(text)) << length;
        EXPECT_EQ(pieces.Digest(), DigestOf(text)) << "asking changes nothing";
    }
}

} // namespace
} // namespace Keltrix::Host
