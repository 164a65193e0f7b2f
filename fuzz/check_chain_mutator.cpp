// How libFuzzer changes the inputs of check_chain.
#include <algorithm>
#include <cstring>
#include <string>

#include "Fuzz.h"
#include "MemberMutator.h"

using Keltrix::Fuzz::Bytes;
using Keltrix::Fuzz::MemberMutator;

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

std::string Scrambled(std::string bytes, std::size_t limit)
{
    const std::size_t size = bytes.size();
    bytes.resize(std::max(limit, size));
    bytes.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(bytes.data()), size, bytes.size()));
    return bytes;
}

std::size_t Put(const std::string& text, std::uint8_t* data, std::size_t maxSize)
{
    const std::size_t size = std::min(text.size(), maxSize);
    std::memcpy(data, text.data(), size);
    return size;
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed)
{
    if (seed % 16 == 0) return LLVMFuzzerMutate(data, size, maxSize);
    MemberMutator mutator(seed, Scrambled);
    return Put(mutator.Mutate(Bytes(data, size)), data, maxSize);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* one, std::size_t oneSize,
                                                 const std::uint8_t* other, std::size_t otherSize, std::uint8_t* out,
                                                 std::size_t maxSize, unsigned int seed)
{
    MemberMutator mutator(seed, Scrambled);
    return Put(mutator.Cross(Bytes(one, oneSize), Bytes(other, otherSize)), out, maxSize);
}
