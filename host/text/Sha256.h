#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Keltrix::Host {

/// SHA-256 (FIPS 180-4) of bytes that come piece by piece: the checksum that `sha256sum` prints.
class Sha256 {
public:
    void Add(std::string_view bytes);
    /// 64 hexadecimal digits of what was added so far; more can be added afterwards.
    std::string Digest() const;

private:
    static constexpr std::size_t BLOCK = 64;

    void Compress(const unsigned char* block);

    // The first 32 bits of the fractional parts of the square roots of the first 8 primes.
    std::array<std::uint32_t, 8> m_state = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                            0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::array<unsigned char, BLOCK> m_block{};
    std::uint64_t m_length = 0; // bytes
};

} // namespace Keltrix::Host
