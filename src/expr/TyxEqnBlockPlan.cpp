// Evaluation in blocks of samples of the element-wise parts of an expression tree.
#include "expr/TyxEqnBlockPlan.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <unordered_map>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <tyx/TyxBuffer.h>
#include <tyx/TyxEqnTile.h>
#include <tyx/TyxSystem.h>

#include "core/TyxParallelFor.h"
#include "expr/TyxEqnTileLoops.h"
#include "expr/TyxFcnNode.h"

namespace tyx::internal {

namespace {

// Tile work asks for parallel loops from this many samples, as the other
// tile loops do.
constexpr uint64_t kParallelThreshold = 27648;
// Blocks per piece of a parallel loop at least: 16 Ki samples, some 10
// microseconds of work against about one of scheduling; oneTBB makes pieces
// larger where the range allows.
constexpr uint64_t kBlocksPerPiece = 4;

// Results from this many bytes on are written past the cache: they are far
// larger than it and are not read again here, so fetching their lines before
// writing them would only add memory traffic.
constexpr uint64_t kStreamBytes = uint64_t(4) << 20;

// Copies \p bytes of a block into the result, past the cache when \p stream.
// Call finishStreaming before the result is read on another thread.
void copyBlock(unsigned char *dst, const void *src, uint64_t bytes, bool stream)
{
    uint64_t done = 0;
#if defined(__SSE2__)
    if (stream && reinterpret_cast<uintptr_t>(dst) % 16 == 0) {
        const auto *from = static_cast<const unsigned char *>(src);
        for (; done + 16 <= bytes; done += 16)
            _mm_stream_si128(reinterpret_cast<__m128i *>(dst + done),
                             _mm_loadu_si128(reinterpret_cast<const __m128i *>(from + done)));
    }
#else
    (void)stream;
#endif
    std::memcpy(dst + done, static_cast<const unsigned char *>(src) + done, bytes - done);
}

// Orders the stores of copyBlock before the ones that follow.
void finishStreaming()
{
#if defined(__SSE2__)
    _mm_sfence();
#endif
}

bool nameIn(const TyxString &name, std::initializer_list<const wchar_t *> names)
{
    return std::any_of(names.begin(), names.end(), [&](const wchar_t *n) { return name == n; });
}

bool isTile(const TyxVariant &v) { return v.type().toEnum() == TyxMetaType::EqnTile; }

const TyxEqnTile &tileOf(const TyxVariant &v)
{
    return static_cast<const TyxVariantImpl<TyxEqnTile> &>(v.impl()).get();
}

// Whether the subtree under \p node holds a call that is not element-wise.
bool holdsBoundary(const TyxEqnNode *node)
{
    std::vector<const TyxEqnNode *> pending{node};
    while (!pending.empty()) {
        const TyxEqnNode *n = pending.back();
        pending.pop_back();
        const TyxFcnNode *fcn = n ? n->toFcnNode() : nullptr;
        if (!fcn)
            continue;
        if (!TyxEqnBlockPlan::isElementWise(*fcn))
            return true;
        for (const TyxEqnNodePtr &arg : std::as_const(*fcn).args())
            pending.push_back(arg.get());
    }
    return false;
}

} // namespace

/// A leaf of a worker's copy of the subtree: the value of the original
/// leaf, or for a tile leaf a window on one block of its samples.
class TyxBlockLeaf final : public TyxEqnNode {
public:
    TyxBlockLeaf() : m_buffer(new TyxBuffer()), m_window(TyxEqnTile())
    {
        m_windowTile = const_cast<TyxEqnTile *>(&tileOf(m_window));
    }

    TyxString className() const override { return L"TyxBlockLeaf"; }
    TyxEqnNodePtr clone() const override { return TyxEqnNodePtr(new TyxBlockLeaf()); }
    const TyxVariant &evaluate() override { return m_useWindow ? m_window : m_value; }

    void bind(const TyxVariant &value)
    {
        m_useWindow = false;
        m_value = value;
    }

    // Shows \p length samples of a tile from sample \p start on.
    void show(const unsigned char *data, uint64_t bytes, const TyxDataType &type, uint64_t step,
              uint64_t sampleBytes, uint64_t start, uint64_t length)
    {
        const uint64_t offset = start * step * sampleBytes;
        // The window is only read; the buffer class has no read-only form.
        m_buffer->wrap(bytes - offset, const_cast<unsigned char *>(data) + offset);
        *m_windowTile = TyxEqnTile(m_buffer, type, length, step);
        m_useWindow = true;
    }

    const TyxBuffer *window() const { return m_buffer.get(); }

private:
    TyxBufferPtr m_buffer;
    TyxVariant m_window;
    TyxEqnTile *m_windowTile;
    TyxVariant m_value;
    bool m_useWindow = false;
};

/// A copy of the subtree for one thread, with leaves of its own.
struct TyxEqnBlockPlan::Worker {
    TyxEqnNodePtr root;
    std::vector<TyxBlockLeaf *> leaves;
};

TyxEqnBlockPlan::TyxEqnBlockPlan(TyxFcnNode &root)
{
    // Parents before their arguments, which m_inner relies on.
    std::vector<TyxFcnNode *> pending{&root};
    while (!pending.empty()) {
        TyxFcnNode *fcn = pending.back();
        pending.pop_back();
        m_inner.push_back(fcn);
        const TyxEqnNodeList &args = std::as_const(*fcn).args();
        std::vector<TyxFcnNode *> inner;
        for (const TyxEqnNodePtr &arg : args) {
            TyxFcnNode *child = arg->toFcnNode();
            if (child && isElementWise(*child)) {
                child->setPlan(nullptr);
                inner.push_back(child);
            } else {
                m_leaves.push_back(arg.get());
            }
        }
        // The leaves of this node are listed before those of its arguments;
        // the order only has to be fixed, since leaves are evaluated before
        // any block.
        for (auto it = inner.rbegin(); it != inner.rend(); ++it)
            pending.push_back(*it);
    }
}

TyxEqnBlockPlan::~TyxEqnBlockPlan() = default;

bool TyxEqnBlockPlan::isElementWise(const TyxFcnNode &fcn)
{
    const TyxEqnNodeList &args = fcn.args();
    if (std::any_of(args.begin(), args.end(), [](const TyxEqnNodePtr &a) { return !a; }))
        return false;
    const TyxString &name = fcn.name();
    switch (args.size()) {
    case 1:
        return nameIn(name,
                      {L"unaryminus", L"unaryplus", L"sin",  L"asin", L"sinh", L"cos",   L"acos",     L"cosh",
                       L"tan",        L"atan",      L"tanh", L"exp",  L"log",  L"log10", L"abs",      L"ceil",
                       L"floor",      L"arg",       L"norm", L"conj", L"real", L"imag",  L"sinc",     L"sqrt",
                       L"trunc",      L"round",     L"y0",   L"y1",   L"j0",   L"j1",    L"factorial"});
    case 2:
        return nameIn(name, {L"add", L"subtract", L"multiply", L"divide", L"pow", L"atan2", L"logb", L"jn",
                             L"yn", L"clipmin", L"clipmax", L"cmplx", L"equals", L"notequals", L"lessthan",
                             L"lessthanequals", L"greaterthan", L"greaterthanequals"});
    case 3:
        if (name == L"clip")
            return true;
        // A condition that is not a tile evaluates one branch only, so the
        // branches may hold nothing that a whole evaluation would skip.
        return name == L"ternary" && !holdsBoundary(args[1].get()) && !holdsBoundary(args[2].get());
    case 4: return name == L"roundclip";
    default: return false;
    }
}

void TyxEqnBlockPlan::attach(TyxEqnNode *root)
{
    std::vector<TyxEqnNode *> pending{root};
    while (!pending.empty()) {
        TyxEqnNode *node = pending.back();
        pending.pop_back();
        TyxFcnNode *fcn = node ? node->toFcnNode() : nullptr;
        if (!fcn)
            continue;
        if (isElementWise(*fcn)) {
            auto plan = std::make_unique<TyxEqnBlockPlan>(*fcn);
            for (TyxEqnNode *leaf : plan->m_leaves)
                pending.push_back(leaf);
            fcn->setPlan(std::move(plan));
            continue;
        }
        fcn->setPlan(nullptr);
        // foreach binds a variable of its own into its expression and folds
        // it; that expression is left as it is.
        if (fcn->name() == L"foreach")
            continue;
        for (const TyxEqnNodePtr &arg : std::as_const(*fcn).args())
            pending.push_back(arg.get());
    }
}

TyxEqnBlockPlan::Worker &TyxEqnBlockPlan::worker(size_t index)
{
    if (m_workers.size() <= index)
        m_workers.resize(index + 1);
    std::unique_ptr<Worker> &slot = m_workers[index];
    if (slot)
        return *slot;
    // The copy is built from the arguments up: m_inner lists parents before
    // their arguments, so in reverse every argument exists before its call.
    auto w = std::make_unique<Worker>();
    std::unordered_map<const TyxEqnNode *, TyxEqnNodePtr> copies;
    for (TyxEqnNode *leaf : m_leaves) {
        // A node met twice keeps one copy.
        if (const auto found = copies.find(leaf); found != copies.end()) {
            w->leaves.push_back(static_cast<TyxBlockLeaf *>(found->second.get()));
            continue;
        }
        w->leaves.push_back(new TyxBlockLeaf());
        copies.emplace(leaf, TyxEqnNodePtr(w->leaves.back()));
    }
    for (auto it = m_inner.rbegin(); it != m_inner.rend(); ++it) {
        TyxEqnNodeList args;
        for (const TyxEqnNodePtr &arg : std::as_const(**it).args())
            args.push_back(copies.at(arg.get()));
        copies[*it] = TyxEqnNodePtr(new TyxFcnNode((*it)->name(), std::move(args)));
    }
    w->root = copies.at(m_inner.front());
    slot = std::move(w);
    return *slot;
}

const TyxVariant &TyxEqnBlockPlan::wholeOnCopy()
{
    Worker &w = worker(0);
    for (size_t i = 0; i < m_leaves.size(); ++i)
        w.leaves[i]->bind(*m_values[i]);
    return w.root->evaluate();
}

const TyxVariant &TyxEqnBlockPlan::runBlock(Worker &w, uint64_t start, uint64_t length)
{
    for (size_t i = 0; i < m_tiles.size(); ++i) {
        const TileLeaf &t = m_tiles[i];
        if (t.data)
            w.leaves[i]->show(t.data, t.bytes, t.type, t.step, t.sampleBytes, start, length);
    }
    return w.root->evaluate();
}

unsigned char *TyxEqnBlockPlan::prepareResult(const TyxDataType &type, uint64_t n)
{
    // The tile of the last evaluation is reused unless someone holds it.
    if (m_result.isShared() || !isTile(m_result))
        m_result = TyxVariant(TyxEqnTile());
    TyxEqnTile &out = const_cast<TyxEqnTile &>(tileOf(m_result));
    TyxBufferPtr &buffer = out.buffer();
    if (buffer && !buffer->hasMultipleRefs() && buffer->ownsData() && buffer->data() &&
        buffer->size() >= n * type.size()) {
        if (out.size() != n || out.step() != 1 || out.dataType() != type)
            out = TyxEqnTile(TyxBufferPtr(buffer), type, n, 1);
        return static_cast<unsigned char *>(out.buffer()->data());
    }
    out.initialize(type, n);
    if (!out.buffer() || !out.buffer()->data()) {
        out = TyxEqnTile();
        return nullptr;
    }
    return static_cast<unsigned char *>(out.buffer()->data());
}

const TyxVariant &TyxEqnBlockPlan::evaluate(TyxFcnNode &root)
{
    if (m_state == State::Whole)
        return root.evaluateBody();
    if (m_state == State::Fresh) {
        const TyxVariant &whole = root.evaluateBody();
        // A subtree whose value is not a tile has no samples to divide.
        m_state = isTile(whole) ? State::Blocked : State::Whole;
        // Its tile becomes the first result buffer of the blocks once the
        // body lets it go.
        if (m_state == State::Blocked)
            m_result = whole;
        return whole;
    }

    m_values.resize(m_leaves.size());
    for (size_t i = 0; i < m_leaves.size(); ++i)
        m_values[i] = &m_leaves[i]->evaluate();
    if (!m_released) {
        // The copies compute from now on; the whole-size intermediates of
        // the first evaluation go.
        for (TyxFcnNode *fcn : m_inner)
            fcn->renewBody();
        m_released = true;
    }

    // Blocks need tile leaves of one size; anything else runs whole on a copy.
    m_tiles.assign(m_leaves.size(), TileLeaf());
    uint64_t n = 0;
    bool anyTile = false;
    for (size_t i = 0; i < m_leaves.size(); ++i) {
        if (!isTile(*m_values[i]))
            continue;
        const TyxEqnTile &t = tileOf(*m_values[i]);
        if (!readable(t) || (anyTile && t.size() != n) || t.size() == 0)
            return wholeOnCopy();
        n = t.size();
        anyTile = true;
        m_tiles[i] = TileLeaf{static_cast<const unsigned char *>(t.buffer()->data()), t.buffer()->size(),
                              t.dataType(), t.step(), t.dataType().size()};
    }
    if (!anyTile)
        return wholeOnCopy();

    const uint64_t blocks = (n + kBlockSamples - 1) / kBlockSamples;
    const bool parallel =
        blocks > 1 && useParallelLoops() && (isTimingLoops() || n >= kParallelThreshold) && workerSlots() > 1;
    const size_t workers = parallel ? workerSlots() : 1;
    for (size_t k = 0; k < workers; ++k) {
        Worker &w = worker(k);
        for (size_t i = 0; i < m_leaves.size(); ++i) {
            if (!m_tiles[i].data)
                w.leaves[i]->bind(*m_values[i]);
        }
    }

    // The first block, on this thread, tells the result type, and whether
    // the subtree gives a block of its own for every block: a result that
    // is not a tile of the block's length, or that is a leaf's window (a
    // branch passed on by ternary or unaryplus), is left to the whole
    // evaluation.
    Worker &first = worker(0);
    const uint64_t firstLength = std::min(n, kBlockSamples);
    const TyxVariant &head = runBlock(first, 0, firstLength);
    auto isBlockOf = [&](const Worker &w, const TyxVariant &v, uint64_t length) {
        if (!isTile(v))
            return false;
        const TyxEqnTile &t = tileOf(v);
        if (t.size() != length || t.step() != 1 || !t.buffer() || !t.buffer()->data())
            return false;
        const TyxBuffer *b = t.buffer().get();
        return std::none_of(w.leaves.begin(), w.leaves.end(),
                            [b](const TyxBlockLeaf *leaf) { return leaf->window() == b; });
    };
    if (!isBlockOf(first, head, firstLength))
        return wholeOnCopy();
    const TyxDataType type = tileOf(head).dataType();
    const uint64_t sampleBytes = type.size();
    unsigned char *out = prepareResult(type, n);
    if (!out)
        return m_result;
    const bool stream = n * sampleBytes >= kStreamBytes;
    copyBlock(out, tileOf(head).buffer()->data(), firstLength * sampleBytes, stream);

    std::atomic<bool> mismatch{false};
    auto run = [&](Worker &w, uint64_t fromBlock, uint64_t toBlock) {
        for (uint64_t b = fromBlock; b < toBlock; ++b) {
            const uint64_t start = b * kBlockSamples;
            const uint64_t length = std::min(kBlockSamples, n - start);
            const TyxVariant &value = runBlock(w, start, length);
            if (!isBlockOf(w, value, length) || tileOf(value).dataType() != type) {
                mismatch.store(true, std::memory_order_relaxed);
                break;
            }
            copyBlock(out + start * sampleBytes, tileOf(value).buffer()->data(), length * sampleBytes,
                      stream);
        }
        finishStreaming();
    };
    if (parallel) {
        auto piece = [&](uint64_t from, uint64_t to) {
            const unsigned slot = workerSlot();
            if (slot >= m_workers.size()) {
                mismatch.store(true, std::memory_order_relaxed);
                return;
            }
            run(*m_workers[slot], from + 1, to + 1);
        };
        // A failure of a block reaches the caller once, as the exception of
        // the first failing block, like that of a loop in order.
        if (const std::exception_ptr failure = parallelChunks(blocks - 1, kBlocksPerPiece, piece))
            std::rethrow_exception(failure);
    } else {
        run(first, 1, blocks);
    }
    finishStreaming();
    if (mismatch.load(std::memory_order_relaxed))
        return wholeOnCopy();
    return m_result;
}

} // namespace tyx::internal
