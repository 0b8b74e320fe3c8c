// Evaluation in blocks of samples of the element-wise parts of an expression tree.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <tyx/TyxDataType.h>
#include <tyx/TyxVariant.h>

#include "expr/TyxEqnNode.h"

namespace tyx::internal {

class TyxBlockLeaf;

/// The plan of one element-wise subtree: a function node whose arguments,
/// down to the leaves, are element-wise operations on tiles, numbers and
/// constants. The leaves are variables, constants and the calls that are
/// not element-wise (reductions, median, element access, foreach, ...),
/// which evaluate whole as before and stand as boundaries.
///
/// The first evaluation runs the subtree whole, as without a plan, so that
/// it specialises and reports failures exactly as before. Later ones
/// evaluate the leaves, then run a copy of the subtree on each block of
/// samples: tile leaves are windows on the leaf's samples, every
/// intermediate is a block, and only the final block result is copied into
/// the result tile. Each node runs its own specialised routine on each
/// block, so every sample sees the same operations in the same order as in
/// the whole evaluation and the result is the same, bit for bit. With
/// parallel loops the blocks are divided over oneTBB's threads, each with a
/// copy of its own. Copies, windows and the result are kept between
/// evaluations, so a repeated evaluation allocates no block memory.
class TyxEqnBlockPlan {
public:
    /// Samples per block. Each intermediate of a block is at most 4096
    /// complex or 8 * 4096 = 32 KiB of Double samples, so the few
    /// intermediates of a typical band-math tree (about 100 to 250 KiB with
    /// the leaves' windows) stay in the core's L2 cache while the next node
    /// reads them, and the work per block (a few microseconds) keeps the
    /// per-block cost of walking the tree copy below a few percent.
    static constexpr uint64_t kBlockSamples = 4096;

    explicit TyxEqnBlockPlan(TyxFcnNode &root);
    ~TyxEqnBlockPlan();
    TyxEqnBlockPlan(const TyxEqnBlockPlan &) = delete;
    TyxEqnBlockPlan &operator=(const TyxEqnBlockPlan &) = delete;

    /// The value of the subtree under \p root, the node that holds the plan.
    const TyxVariant &evaluate(TyxFcnNode &root);

    /// Gives every maximal element-wise subtree of the tree under \p root a
    /// plan and drops the plans of all other function nodes.
    static void attach(TyxEqnNode *root);

    /// Whether \p fcn computes sample by sample: its result for a tile has
    /// the operands' size, and each result sample depends only on the
    /// samples of the same index.
    static bool isElementWise(const TyxFcnNode &fcn);

private:
    struct Worker;
    struct TileLeaf {
        const unsigned char *data = nullptr;
        uint64_t bytes = 0;
        TyxDataType type;
        uint64_t step = 0;
        uint64_t sampleBytes = 0;
    };
    enum class State { Fresh, Blocked, Whole };

    Worker &worker(size_t index);
    const TyxVariant &wholeOnCopy();
    const TyxVariant &runBlock(Worker &w, uint64_t start, uint64_t length);
    unsigned char *prepareResult(const TyxDataType &type, uint64_t n);

    // The leaves and the element-wise function nodes of the original
    // subtree, in depth-first order; the root is m_inner[0].
    std::vector<TyxEqnNode *> m_leaves;
    std::vector<TyxFcnNode *> m_inner;
    std::vector<const TyxVariant *> m_values;
    std::vector<TileLeaf> m_tiles;
    std::vector<std::unique_ptr<Worker>> m_workers;
    TyxVariant m_result;
    State m_state = State::Fresh;
    bool m_released = false;
};

} // namespace tyx::internal
