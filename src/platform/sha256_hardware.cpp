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

/// Four words of the message schedule out of the sixteen before them, the earliest first.
__attribute__((target("sha,sse4.1"))) __m128i NextWords(__m128i w16, __m128i w12, __m128i w8, __m128i w4) {
    const __m128i early = _mm_sha256msg1_epu32(w16, w12);
    return _mm_sha256msg2_epu32(_mm_add_epi32(early, _mm_alignr_epi8(w4, w8, 4)), w4);
}

/// abef, cdgh: the words of the state that the instructions want together.
__attribute__((target("sha,sse4.1"))) void TakeBlock(__m128i& abef, __m128i& cdgh, const char* block) {
    const __m128i bigEndian = _mm_set_epi64x(0x0c0d0e0f08090a0bLL, 0x0405060700010203LL);
    const __m128i abefBefore = abef;
    const __m128i cdghBefore = cdgh;
    __m128i w[4];
    for (std::size_t i = 0; i < 4; ++i) w[i] = _mm_shuffle_epi8(Load(block + 16 * i), bigEndian);
    for (std::size_t i = 0; i < 16; ++i) {
        __m128i& words = w[i % 4];
        const __m128i sums = _mm_add_epi32(words, Load(&sha256Constants[4 * i]));
        cdgh = _mm_sha256rnds2_epu32(cdgh, abef, sums);
        abef = _mm_sha256rnds2_epu32(abef, cdgh, _mm_shuffle_epi32(sums, 0x0E));
        words = NextWords(words, w[(i + 1) % 4], w[(i + 2) % 4], w[(i + 3) % 4]);
    }
    abef = _mm_add_epi32(abef, abefBefore);
    cdgh = _mm_add_epi32(cdgh, cdghBefore);
}

int Signed(std::uint32_t word) {
    return static_cast<int>(word);
}

}  // namespace

bool TakeSha256BlocksInHardware(Sha256State& state, const char* bytes, std::size_t blocks) {
    static const bool isPossible = HasInstructions();
    if (!isPossible) return false;
    const auto& [a, b, c, d, e, f, g, h] = state;
    __m128i abef = _mm_set_epi32(Signed(a), Signed(b), Signed(e), Signed(f));
    __m128i cdgh = _mm_set_epi32(Signed(c), Signed(d), Signed(g), Signed(h));
    for (std::size_t i = 0; i < blocks; ++i) TakeBlock(abef, cdgh, bytes + i * sha256BlockBytes);
    std::array<std::uint32_t, 4> feba{};
    std::array<std::uint32_t, 4> hgdc{};
    _mm_storeu_si128(reinterpret_cast<__m128i*>(feba.data()), abef);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(hgdc.data()), cdgh);
    state = {feba[3], feba[2], hgdc[3], hgdc[2], feba[1], feba[0], hgdc[1], hgdc[0]};
    return true;
}

#else

bool TakeSha256BlocksInHardware(Sha256State&, const char*, std::size_t) {
    return false;
}

#endif

}  // namespace bellmark
