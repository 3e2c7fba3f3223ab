#include "platform/sha256.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "platform/sha256_blocks.h"

namespace bellmark {

namespace {

constexpr std::size_t lengthBytes = 8;  // at the end of the last block
constexpr std::size_t rounds = sha256Constants.size();

/// The first 32 bits of the fractions of the square roots of the first eight primes (FIPS 180-4, 5.3.3).
constexpr Sha256State initialState{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                   0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

std::uint32_t WordAt(const char* bytes) {
    const auto byte = [&](int i) { return std::uint32_t{static_cast<unsigned char>(bytes[i])}; };
    return byte(0) << 24U | byte(1) << 16U | byte(2) << 8U | byte(3);
}

/// The message schedule of a block (FIPS 180-4, 6.2.2, step 1).
std::array<std::uint32_t, rounds> ScheduleOf(const char* block) {
    std::array<std::uint32_t, rounds> w;
    for (std::size_t t = 0; t < 16; ++t) w[t] = WordAt(block + 4 * t);
    for (std::size_t t = 16; t < rounds; ++t) {
        const std::uint32_t early = std::rotr(w[t - 15], 7) ^ std::rotr(w[t - 15], 18) ^ (w[t - 15] >> 3U);
        const std::uint32_t late = std::rotr(w[t - 2], 17) ^ std::rotr(w[t - 2], 19) ^ (w[t - 2] >> 10U);
        w[t] = w[t - 16] + early + w[t - 7] + late;
    }
    return w;
}

/// Takes a block into the state (FIPS 180-4, 6.2.2). The letters are those of the standard. They are passed on in turn
/// instead of being moved, eight rounds at a time.
void TakeBlock(Sha256State& state, const char* block) {
    const auto w = ScheduleOf(block);
    auto [a, b, c, d, e, f, g, h] = state;
    std::size_t t = 0;
    const auto turn = [&](auto p, auto q, auto r, auto& s, auto x, auto y, auto z, auto& last) {
        const std::uint32_t choice = (x & y) ^ (~x & z);
        const std::uint32_t majority = (p & q) ^ (p & r) ^ (q & r);
        const std::uint32_t first =
            last + (std::rotr(x, 6) ^ std::rotr(x, 11) ^ std::rotr(x, 25)) + choice + sha256Constants[t] + w[t];
        s += first;
        last = first + (std::rotr(p, 2) ^ std::rotr(p, 13) ^ std::rotr(p, 22)) + majority;
        ++t;
    };
    while (t < rounds) {
        turn(a, b, c, d, e, f, g, h);
        turn(h, a, b, c, d, e, f, g);
        turn(g, h, a, b, c, d, e, f);
        turn(f, g, h, a, b, c, d, e);
        turn(e, f, g, h, a, b, c, d);
        turn(d, e, f, g, h, a, b, c);
        turn(c, d, e, f, g, h, a, b);
        turn(b, c, d, e, f, g, h, a);
    }
    const Sha256State taken{a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < state.size(); ++i) state[i] += taken[i];
}

/// What is left of the message, a bit of 1, zeros, and the length of the whole message in bits: one block or two.
std::string PaddedEnd(std::string_view rest, std::uint64_t messageBytes) {
    std::string end(rest);
    end += '\x80';
    while (end.size() % sha256BlockBytes != sha256BlockBytes - lengthBytes) end += '\0';
    const std::uint64_t bits = messageBytes * 8;
    for (int shift = 56; shift >= 0; shift -= 8) end += static_cast<char>(static_cast<unsigned char>(bits >> shift));
    return end;
}

void TakeBlocksInPortableCode(Sha256State& state, const char* bytes, std::size_t blocks) {
    for (std::size_t i = 0; i < blocks; ++i) TakeBlock(state, bytes + i * sha256BlockBytes);
}

void TakeBlocks(Sha256State& state, const char* bytes, std::size_t blocks) {
    if (!TakeSha256BlocksInHardware(state, bytes, blocks)) TakeBlocksInPortableCode(state, bytes, blocks);
}

template <class Take>
std::string Digest(std::string_view bytes, Take take) {
    Sha256State state = initialState;
    const std::size_t blocks = bytes.size() / sha256BlockBytes;
    take(state, bytes.data(), blocks);
    const std::string end = PaddedEnd(bytes.substr(blocks * sha256BlockBytes), bytes.size());
    take(state, end.data(), end.size() / sha256BlockBytes);
    constexpr const char* digits = "0123456789abcdef";
    std::string digest;
    for (const std::uint32_t word : state) {
        for (int shift = 28; shift >= 0; shift -= 4) digest += digits[word >> shift & 0xFU];
    }
    return digest;
}

}  // namespace

std::string Sha256(std::string_view bytes) {
    return Digest(bytes, TakeBlocks);
}

std::string Sha256InPortableCode(std::string_view bytes) {
    return Digest(bytes, TakeBlocksInPortableCode);
}

}  // namespace bellmark
