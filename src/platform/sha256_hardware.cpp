#include "platform/sha256_blocks.h"

#if defined(__x86_64__) && defined(__GNUC__)
#include <cpuid.h>
#include <immintrin.h>
#endif

namespace bellmark {

#if defined(__x86_64__) && defined(__GNUC__)

namespace {

bool HasInstructions() {
    unsigned a = 0;
    unsigned b = 0;
    unsigned c = 0;
    unsigned d = 0;
    constexpr unsigned ssse3 = 1U << 9U;
    constexpr unsigned sse41 = 1U << 19U;
    constexpr unsigned sha = 1U << 29U;
    if (__get_cpuid(1, &a, &b, &c, &d) == 0 || (c & ssse3) == 0 || (c & sse41) == 0) return false;
    return __get_cpuid_count(7, 0, &a, &b, &c, &d) != 0 && (b & sha) != 0;
}

__m128i Load(const void* from) {
    return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

/// abef, cdgh: the words of the state that the instructions want together.
struct Halves {
    __m128i abef;
    __m128i cdgh;
};

/// Four rounds, with the words of the message schedule that belong to them.
[[gnu::target("sha,sse4.1"), gnu::always_inline]] inline void FourRounds(Halves& state, __m128i words, std::size_t i) {
    const __m128i sums = _mm_add_epi32(words, Load(&sha256Constants[4 * i]));
    state.cdgh = _mm_sha256rnds2_epu32(state.cdgh, state.abef, sums);
    state.abef = _mm_sha256rnds2_epu32(state.abef, state.cdgh, _mm_shuffle_epi32(sums, 0x0E));
}

/// Puts the next four words of the schedule in place of the earliest of the last sixteen.
[[gnu::target("sha,sse4.1"), gnu::always_inline]] inline void NextWords(__m128i& w16, __m128i w12, __m128i w8,
                                                                        __m128i w4) {
    const __m128i early = _mm_sha256msg1_epu32(w16, w12);
    w16 = _mm_sha256msg2_epu32(_mm_add_epi32(early, _mm_alignr_epi8(w4, w8, 4)), w4);
}

/// The words are in variables of their own: an array would go through memory in each round.
[[gnu::target("sha,sse4.1")]] void TakeBlock(Halves& state, const char* block) {
    const __m128i bigEndian = _mm_set_epi64x(0x0c0d0e0f08090a0bLL, 0x0405060700010203LL);
    Halves now = state;
    __m128i w0 = _mm_shuffle_epi8(Load(block), bigEndian);
    __m128i w1 = _mm_shuffle_epi8(Load(block + 16), bigEndian);
    __m128i w2 = _mm_shuffle_epi8(Load(block + 32), bigEndian);
    __m128i w3 = _mm_shuffle_epi8(Load(block + 48), bigEndian);
    for (std::size_t i = 0; i < 12; i += 4) {
        FourRounds(now, w0, i);
        NextWords(w0, w1, w2, w3);
        FourRounds(now, w1, i + 1);
        NextWords(w1, w2, w3, w0);
        FourRounds(now, w2, i + 2);
        NextWords(w2, w3, w0, w1);
        FourRounds(now, w3, i + 3);
        NextWords(w3, w0, w1, w2);
    }
    FourRounds(now, w0, 12);
    FourRounds(now, w1, 13);
    FourRounds(now, w2, 14);
    FourRounds(now, w3, 15);
    state.abef = _mm_add_epi32(now.abef, state.abef);
    state.cdgh = _mm_add_epi32(now.cdgh, state.cdgh);
}

int Signed(std::uint32_t word) {
    return static_cast<int>(word);
}

}  // namespace

bool TakeSha256BlocksInHardware(Sha256State& state, const char* bytes, std::size_t blocks) {
    static const bool isPossible = HasInstructions();
    if (!isPossible) return false;
    const auto& [a, b, c, d, e, f, g, h] = state;
    Halves halves{_mm_set_epi32(Signed(a), Signed(b), Signed(e), Signed(f)),
                  _mm_set_epi32(Signed(c), Signed(d), Signed(g), Signed(h))};
    for (std::size_t i = 0; i < blocks; ++i) TakeBlock(halves, bytes + i * sha256BlockBytes);
    std::array<std::uint32_t, 4> feba{};
    std::array<std::uint32_t, 4> hgdc{};
    _mm_storeu_si128(reinterpret_cast<__m128i*>(feba.data()), halves.abef);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(hgdc.data()), halves.cdgh);
    state = {feba[3], feba[2], hgdc[3], hgdc[2], feba[1], feba[0], hgdc[1], hgdc[0]};
    return true;
}

#else

bool TakeSha256BlocksInHardware(Sha256State&, const char*, std::size_t) {
    return false;
}

#endif

}  // namespace bellmark
