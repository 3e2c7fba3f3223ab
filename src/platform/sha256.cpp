#include "platform/sha256.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace bellmark {

namespace {

constexpr std::size_t blockBytes = 64;
constexpr std::size_t lengthBytes = 8;  // at the end of the last block
constexpr std::size_t rounds = 64;

/// The first 32 bits of the fractions of the cube roots of the first 64 primes (FIPS 180-4, 4.2.2).
constexpr std::array<std::uint32_t, rounds> roundConstants{
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

/// The first 32 bits of the fractions of the square roots of the first eight primes (FIPS 180-4, 5.3.3).
constexpr std::array<std::uint32_t, 8> initialState{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
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
void TakeBlock(std::array<std::uint32_t, 8>& state, const char* block) {
    const auto w = ScheduleOf(block);
    auto [a, b, c, d, e, f, g, h] = state;
    std::size_t t = 0;
    const auto turn = [&](auto p, auto q, auto r, auto& s, auto x, auto y, auto z, auto& last) {
        const std::uint32_t choice = (x & y) ^ (~x & z);
        const std::uint32_t majority = (p & q) ^ (p & r) ^ (q & r);
        const std::uint32_t first =
            last + (std::rotr(x, 6) ^ std::rotr(x, 11) ^ std::rotr(x, 25)) + choice + roundConstants[t] + w[t];
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
    const std::array<std::uint32_t, 8> taken{a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < state.size(); ++i) state[i] += taken[i];
}

/// What is left of the message, a bit of 1, zeros, and the length of the whole message in bits: one block or two.
std::string PaddedEnd(std::string_view rest, std::uint64_t messageBytes) {
    std::string end(rest);
    end += '\x80';
    while (end.size() % blockBytes != blockBytes - lengthBytes) end += '\0';
    const std::uint64_t bits = messageBytes * 8;
    for (int shift = 56; shift >= 0; shift -= 8) end += static_cast<char>(static_cast<unsigned char>(bits >> shift));
    return end;
}

}  // namespace

std::string Sha256(std::string_view bytes) {
    std::array<std::uint32_t, 8> state = initialState;
    const std::size_t whole = bytes.size() / blockBytes * blockBytes;
    for (std::size_t at = 0; at < whole; at += blockBytes) TakeBlock(state, bytes.data() + at);
    const std::string end = PaddedEnd(bytes.substr(whole), bytes.size());
    for (std::size_t at = 0; at < end.size(); at += blockBytes) TakeBlock(state, end.data() + at);
    constexpr const char* digits = "0123456789abcdef";
    std::string digest;
    for (const std::uint32_t word : state) {
        for (int shift = 28; shift >= 0; shift -= 4) digest += digits[word >> shift & 0xFU];
    }
    return digest;
}

}  // namespace bellmark
