#pragma once

#include <immintrin.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace kestrel {

// Rows of hands turned into lanes and back. Interleaved, the lanes of a hand stand side by side:
// hand h of row i at h * lanes + i, with lanes = 4 * vectors. `hands` is a multiple of eight; all
// rows start on a 32-byte boundary.

/// An 8 by 8 block of floats turned: to[j][i] = from[i][j].
inline void transpose_8x8(const __m256 (&from)[8], __m256 (&to)[8]) {
    __m256 pair[8];
    __m256 quad[8];
    for (std::size_t i = 0; i < 4; ++i) {
        pair[2 * i] = _mm256_unpacklo_ps(from[2 * i], from[2 * i + 1]);
        pair[2 * i + 1] = _mm256_unpackhi_ps(from[2 * i], from[2 * i + 1]);
    }
    for (std::size_t i = 0; i < 2; ++i) {
        const std::size_t k = 4 * i;
        quad[k] = _mm256_shuffle_ps(pair[k], pair[k + 2], 0x44);
        quad[k + 1] = _mm256_shuffle_ps(pair[k], pair[k + 2], 0xEE);
        quad[k + 2] = _mm256_shuffle_ps(pair[k + 1], pair[k + 3], 0x44);
        quad[k + 3] = _mm256_shuffle_ps(pair[k + 1], pair[k + 3], 0xEE);
    }
    for (std::size_t i = 0; i < 4; ++i) {
        to[i] = _mm256_permute2f128_ps(quad[i], quad[i + 4], 0x20);
        to[i + 4] = _mm256_permute2f128_ps(quad[i], quad[i + 4], 0x31);
    }
}

/// Interleaves `lanes` rows, and tells for each hand whether any of its lanes is other than zero.
template <std::size_t vectors>
void interleave(const float* const* rows, std::size_t hands, float* to, std::uint8_t* nonzero) {
    constexpr std::size_t lanes = 4 * vectors;
    const __m256 zero = _mm256_setzero_ps();
    for (std::size_t h = 0; h < hands; h += 8) {
        __m256 any = zero;
        if constexpr (vectors == 1) {
            __m256 row[4];
            for (std::size_t i = 0; i < 4; ++i) {
                row[i] = _mm256_load_ps(rows[i] + h);
                any = _mm256_or_ps(any, row[i]);
            }
            for (std::size_t half = 0; half < 2; ++half) {
                __m128 block[4];
                for (std::size_t i = 0; i < 4; ++i) {
                    block[i] = half == 0 ? _mm256_castps256_ps128(row[i])
                                         : _mm256_extractf128_ps(row[i], 1);
                }
                _MM_TRANSPOSE4_PS(block[0], block[1], block[2], block[3]);
                for (std::size_t j = 0; j < 4; ++j) {
                    _mm_store_ps(to + (h + 4 * half + j) * lanes, block[j]);
                }
            }
        } else {
            for (std::size_t first = 0; first < lanes; first += 8) {
                __m256 row[8];
                __m256 turned[8];
                for (std::size_t i = 0; i < 8; ++i) {
                    row[i] = _mm256_load_ps(rows[first + i] + h);
                    any = _mm256_or_ps(any, row[i]);
                }
                transpose_8x8(row, turned);
                for (std::size_t j = 0; j < 8; ++j) {
                    _mm256_store_ps(to + (h + j) * lanes + first, turned[j]);
                }
            }
        }
        const auto mask =
            static_cast<unsigned>(_mm256_movemask_ps(_mm256_cmp_ps(any, zero, _CMP_NEQ_UQ)));
        for (std::size_t j = 0; j < 8; ++j) {
            nonzero[h + j] = static_cast<std::uint8_t>(mask >> j & 1U);
        }
    }
}

/// The inverse, for the first rows.size() lanes.
template <std::size_t vectors>
void separate(const float* from, std::size_t hands, std::span<float* const> rows) {
    constexpr std::size_t lanes = 4 * vectors;
    for (std::size_t h = 0; h < hands; h += 8) {
        if constexpr (vectors == 1) {
            __m128 half[2][4];
            for (std::size_t k = 0; k < 2; ++k) {
                for (std::size_t j = 0; j < 4; ++j) {
                    half[k][j] = _mm_load_ps(from + (h + 4 * k + j) * lanes);
                }
                _MM_TRANSPOSE4_PS(half[k][0], half[k][1], half[k][2], half[k][3]);
            }
            for (std::size_t i = 0; i < rows.size(); ++i) {
                _mm256_store_ps(rows[i] + h, _mm256_set_m128(half[1][i], half[0][i]));
            }
        } else {
            for (std::size_t first = 0; first < rows.size(); first += 8) {
                __m256 row[8];
                __m256 turned[8];
                for (std::size_t j = 0; j < 8; ++j) {
                    row[j] = _mm256_load_ps(from + (h + j) * lanes + first);
                }
                transpose_8x8(row, turned);
                for (std::size_t i = first; i < std::min(first + 8, rows.size()); ++i) {
                    _mm256_store_ps(rows[i] + h, turned[i - first]);
                }
            }
        }
    }
}

}  // namespace kestrel
