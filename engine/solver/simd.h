#pragma once

#include <immintrin.h>

#include <cstddef>

namespace kestrel {

/// Floats in a vector; rows of the batched walk start on a vector boundary and are padded to one.
inline constexpr std::size_t vector_floats = 8;

constexpr std::size_t padded_row(std::size_t hands) {
    return (hands + vector_floats - 1) / vector_floats * vector_floats;
}

/// Several terminals side by side: 4 doubles for each of `vectors` registers.
template <std::size_t vectors>
struct Lanes {
    static constexpr std::size_t count = 4 * vectors;
    __m256d v[vectors];

    static Lanes zero() {
        Lanes r;
        for (auto& x : r.v) {
            x = _mm256_setzero_pd();
        }
        return r;
    }
    static Lanes load(const double* p) {
        Lanes r;
        for (std::size_t i = 0; i < vectors; ++i) {
            r.v[i] = _mm256_load_pd(p + 4 * i);
        }
        return r;
    }
    /// Widens `count` floats.
    static Lanes widen(const float* p) {
        Lanes r;
        for (std::size_t i = 0; i < vectors; ++i) {
            r.v[i] = _mm256_cvtps_pd(_mm_load_ps(p + 4 * i));
        }
        return r;
    }
    void store(double* p) const {
        for (std::size_t i = 0; i < vectors; ++i) {
            _mm256_store_pd(p + 4 * i, v[i]);
        }
    }
    /// Rounds to `count` floats.
    void narrow(float* p) const {
        for (std::size_t i = 0; i < vectors; ++i) {
            _mm_store_ps(p + 4 * i, _mm256_cvtpd_ps(v[i]));
        }
    }
    /// Rounds to floats and adds these to `p` in single precision.
    void narrow_and_add(float* p) const {
        for (std::size_t i = 0; i < vectors; ++i) {
            _mm_store_ps(p + 4 * i, _mm_add_ps(_mm_load_ps(p + 4 * i), _mm256_cvtpd_ps(v[i])));
        }
    }

    friend Lanes operator+(Lanes a, const Lanes& b) {
        for (std::size_t i = 0; i < vectors; ++i) {
            a.v[i] = _mm256_add_pd(a.v[i], b.v[i]);
        }
        return a;
    }
    friend Lanes operator-(Lanes a, const Lanes& b) {
        for (std::size_t i = 0; i < vectors; ++i) {
            a.v[i] = _mm256_sub_pd(a.v[i], b.v[i]);
        }
        return a;
    }
    friend Lanes operator*(Lanes a, const Lanes& b) {
        for (std::size_t i = 0; i < vectors; ++i) {
            a.v[i] = _mm256_mul_pd(a.v[i], b.v[i]);
        }
        return a;
    }
};

}  // namespace kestrel
