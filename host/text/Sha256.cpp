#include "text/Sha256.h"

#include <algorithm>
#include <cstring>

namespace Keltrix::Host {

namespace {

// The first 32 bits of the fractional parts of the cube roots of the first 64 primes.
constexpr std::uint32_t K[64] = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

constexpr std::uint32_t Turned(std::uint32_t word, int bits) { return (word >> bits) | (word << (32 - bits)); }

} // namespace

void Sha256::Add(std::string_view bytes)
{
    while (!bytes.empty()) {
        const std::size_t used = m_length % BLOCK;
        const std::size_t taken = std::min(BLOCK - used, bytes.size());
        std::memcpy(m_block.data() + used, bytes.data(), taken);
        m_length += taken;
        bytes.remove_prefix(taken);
        if (used + taken == BLOCK) Compress(m_block.data());
    }
}

std::string Sha256::Digest() const
{
    // A bit 1, zeros, and the length in bits at the end of a block.
    Sha256 padded = *this;
    const std::uint64_t bits = m_length * 8;
    padded.Add(std::string_view("\x80", 1));
    while (padded.m_length % BLOCK != BLOCK - 8)
        padded.Add(std::string_view("\0", 1));
    for (int shift = 56; shift >= 0; shift -= 8) {
        const char byte = static_cast<char>((bits >> shift) & 0xff);
        padded.Add({&byte, 1});
    }
    std::string digits;
    for (const std::uint32_t word : padded.m_state) {
        for (int shift = 28; shift >= 0; shift -= 4)
            digits += "0123456789abcdef"[(word >> shift) & 0xf];
    }
    return digits;
}

// The names are those of FIPS 180-4, 6.2.2.
void Sha256::Compress(const unsigned char* block)
{
    std::uint32_t w[64];
    for (std::size_t t = 0; t < 16; ++t)
        w[t] = static_cast<std::uint32_t>(block[4 * t]) << 24 | static_cast<std::uint32_t>(block[4 * t + 1]) << 16 |
               static_cast<std::uint32_t>(block[4 * t + 2]) << 8 | block[4 * t + 3];
    for (std::size_t t = 16; t < 64; ++t) {
        const std::uint32_t s0 = Turned(w[t - 15], 7) ^ Turned(w[t - 15], 18) ^ (w[t - 15] >> 3);
        const std::uint32_t s1 = Turned(w[t - 2], 17) ^ Turned(w[t - 2], 19) ^ (w[t - 2] >> 10);
        w[t] = s1 + w[t - 7] + s0 + w[t - 16];
    }
    auto [a, b, c, d, e, f, g, h] = m_state;
    for (std::size_t t = 0; t < 64; ++t) {
        const std::uint32_t s1 = Turned(e, 6) ^ Turned(e, 11) ^ Turned(e, 25);
        const std::uint32_t t1 = h + s1 + ((e & f) ^ (~e & g)) + K[t] + w[t];
        const std::uint32_t s0 = Turned(a, 2) ^ Turned(a, 13) ^ Turned(a, 22);
        const std::uint32_t t2 = s0 + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + t1;
        d = c;
        c = b;
        b = a;
        a = t1 + t2;
    }
    const std::array<std::uint32_t, 8> sums = {a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < sums.size(); ++i)
        m_state[i] += sums[i];
}

} // namespace Keltrix::Host
