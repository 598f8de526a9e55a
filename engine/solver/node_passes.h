#pragma once

#include <cstddef>

namespace kestrel {

// The work of a whole decision node in one pass over its hands: the kernels of kernels.h fused, so
// that a node's rows travel once through the caches. Each gives the same bits as the kernels one
// after the other.
//
// A node's own rows (regrets, sums) are A x H, action-major and tight. Rows of the walk (values,
// reach, next, out) start on a 32-byte boundary and hold padded_row(H) floats, action a at
// a * padded_row(H); what their padding holds does not matter.

// `ahead` names rows that the walk comes to next: as many bytes of them as the pass itself reads
// are fetched into the caches on the way. Any address will do, null too.

/// Most actions of a node that these passes take.
inline constexpr std::size_t most_fused_actions = 8;

/// The node of the traversed seat in an iteration: out = expectation of `values` under the current
/// strategy, and both rows of the node are brought forward.
void update_own_node(float* regrets, float* sums, const float* values, float* out,
                     std::size_t actions, std::size_t hands, float alpha, float beta, float gamma,
                     const float* regrets_ahead, const float* sums_ahead);

/// The node of the other seat in an iteration: next (A rows) = current strategy times reach.
void current_reach(float* next, const float* regrets, const float* reach, std::size_t actions,
                   std::size_t hands, const float* ahead);

/// The same under the average strategy: next (A rows) = average strategy times reach.
void average_reach(float* next, const float* sums, const float* reach, std::size_t actions,
                   std::size_t hands, const float* ahead);

/// totals (A) = the sum of each action's average probabilities over the hands, in hand order.
void average_totals(double* totals, const float* sums, std::size_t actions, std::size_t hands);

/// out = expectation of `values` under the average strategy, in double precision, rounded once.
void average_value(float* out, const float* sums, const float* values, std::size_t actions,
                   std::size_t hands);

// Over rows of the walk alone; any number of rows.

/// out = the largest of the rows.
void largest_value(float* out, const float* rows, std::size_t count, std::size_t hands);

/// out = the sum of the rows in double precision in row order, rounded once.
void sum_padded_rows(float* out, const float* rows, std::size_t count, std::size_t hands);

}  // namespace kestrel
