#pragma once

#include <cstddef>

namespace kestrel {

// The flat loops of the solver, on f32 rows. Matrices of A actions and H hands are action-major:
// element (a, h) stands at a * H + h. Sums over actions run in action order and multiply and add
// are two roundings, so the vector width changes no result. A count of 0 writes nothing.
// Source: Zinkevich et al., "Regret Minimization in Games with Incomplete Information" (2007);
// Brown and Sandholm, "Solving Imperfect-Information Games via Discounted Regret Minimization"
// (2019).

/// The current strategy (A x H) from the regrets (A x H): each hand plays in proportion to its
/// positive regrets, uniformly where it has none. `denominator` (H) is left holding the reciprocal
/// of each hand's positive sum, 0 where there is none or where it is not finite.
void regret_matching(float* strategy, float* denominator, const float* regrets, std::size_t actions,
                     std::size_t hands);

/// regrets (A x H) = (regret >= 0 ? alpha : beta) * regret + action_values - ev, in this order.
void update_regrets(float* regrets, const float* action_values, const float* ev,
                    std::size_t actions, std::size_t hands, float alpha, float beta);

/// out (H) = expectation of action_values (A x H) under strategy (A x H).
void fma_actions(float* out, const float* strategy, const float* action_values, std::size_t actions,
                 std::size_t hands);

/// sum (n) = gamma * sum + strategy.
void strategy_sum_update(float* sum, const float* strategy, float gamma, std::size_t n);

/// dst (H) += each of the rows (A x H), in order.
void sum_rows_into(float* dst, const float* rows, std::size_t actions, std::size_t hands);

/// out (H) = sum of the rows (A x H) in double precision in row order, rounded once.
void sum_rows_in_double(float* out, const float* rows, std::size_t actions, std::size_t hands);

/// dst (n) = s * src.
void scale_row(float* dst, const float* src, float s, std::size_t n);

/// dst (n) = a * b.
void multiply_rows(float* dst, const float* a, const float* b, std::size_t n);

/// dst (n) += s * src; nothing when s is 0.
void add_scaled_row(float* dst, const float* src, std::size_t n, float s);

}  // namespace kestrel
