// Reference-counted sample memory with huge-page backing for large blocks.
#include <tyx/TyxBuffer.h>

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include <sys/mman.h>

#include <tyx/TyxVariant.h>

#include "core/TyxPost.h"

namespace tyx {

namespace {

// Joins the variant (code 18) and the conversion matrix at library load.
[[maybe_unused]] const bool joinedVariant = internal::TyxVariantRegistrar::join<TyxBufferPtr>();

// Blocks from this size up are aligned to it and advised for huge pages: a
// first touch of a 4 KiB page costs far more than the arithmetic on it.
constexpr uint64_t kHugePage = uint64_t(2) << 20;

enum Failure { NoFailure, NullBlock, BadAlloc, UnknownException };

TyxString failureText(int kind, uint64_t size)
{
    TyxString text;
    if (kind == BadAlloc)
        text = L"Caught a bad memory allocation exception. ";
    else if (kind == UnknownException)
        text = L"Caught an unknown exception. ";
    text += L"Cannot allocate '";
    text += std::to_wstring(size);
    text += L"' bytes for buffer.";
    return text;
}

// Every block comes from the C allocator, so free() and realloc() serve
// both kinds.
void *newBlock(uint64_t size)
{
    if (size < kHugePage)
        return std::malloc(size);
    const uint64_t rounded = (size + kHugePage - 1) & ~(kHugePage - 1);
    if (rounded < size)
        return nullptr;
    void *block = std::aligned_alloc(kHugePage, rounded);
    if (block)
        ::madvise(block, rounded, MADV_HUGEPAGE); // only advice: a refusal changes nothing
    return block;
}

} // namespace

TyxBuffer::TyxBuffer(uint64_t size, bool allocateNow) : m_size(size)
{
    if (allocateNow)
        allocate();
}

TyxBuffer::TyxBuffer(uint64_t size, void *data, bool takeOwnership)
    : m_ownsData(takeOwnership || data == nullptr), m_foreign(data != nullptr), m_data(data), m_size(size)
{
}

TyxBuffer::TyxBuffer(const TyxBuffer &other) : TyxRefCounted() { *this = other; }

TyxBuffer &TyxBuffer::operator=(const TyxBuffer &other)
{
    if (this == &other)
        return *this;
    if (other.m_size == 0) {
        deallocate();
        m_size = 0;
        return *this;
    }
    if (m_size != other.m_size) {
        deallocate();
        m_size = other.m_size;
    }
    if (other.m_data && allocate()) {
        std::memcpy(m_data, other.m_data, m_size);
        m_failed = false;
    }
    m_dataType = other.m_dataType;
    return *this;
}

TyxBuffer::~TyxBuffer() { deallocate(); }

void *TyxBuffer::allocate()
{
    if (m_data || m_size == 0)
        return m_data;
    int failure = NoFailure;
    try {
        m_data = newBlock(m_size);
        if (!m_data)
            failure = NullBlock;
    } catch (const std::bad_alloc &) {
        failure = BadAlloc;
    } catch (...) {
        failure = UnknownException;
    }
    m_ownsData = true;
    m_failed = failure != NoFailure;
    if (m_failed) {
        m_data = nullptr;
        // Posted outside the try block: the default handler throws.
        TYX_POST_ERROR(failureText(failure, m_size));
    }
    return m_data;
}

void TyxBuffer::wrap(uint64_t size, void *data)
{
    if (m_ownsData && m_data)
        std::free(m_data);
    m_data = data;
    m_size = size;
    m_ownsData = data == nullptr;
    m_foreign = data != nullptr;
    m_failed = false;
}

bool TyxBuffer::deallocate()
{
    const bool freed = m_ownsData && m_data;
    if (freed)
        std::free(m_data);
    m_data = nullptr;
    m_ownsData = true;
    // The wrapped block is gone; any later block is the buffer's own.
    m_foreign = false;
    m_failed = false;
    m_dataType = TyxDataType();
    return freed;
}

void *TyxBuffer::reallocate(uint64_t newSize, bool keepContents)
{
    if (!keepContents || !m_data) {
        const TyxDataType label = m_dataType;
        deallocate();
        m_size = newSize;
        m_dataType = label;
        return allocate();
    }
    if (newSize == 0) {
        // Nothing to keep; the block goes without a failure.
        deallocate();
        m_size = 0;
        return nullptr;
    }
    int failure = NoFailure;
    void *block = nullptr;
    try {
        if (m_ownsData && !m_foreign && newSize < kHugePage) {
            block = std::realloc(m_data, newSize);
            if (!block)
                std::free(m_data);
        } else {
            // A wrapped block, or a large one that needs the huge-page
            // alignment: copy into a new block of the buffer's own.
            block = newBlock(newSize);
            if (block)
                std::memcpy(block, m_data, newSize < m_size ? newSize : m_size);
            if (m_ownsData)
                std::free(m_data);
        }
        if (!block)
            failure = NullBlock;
    } catch (const std::bad_alloc &) {
        failure = BadAlloc;
    } catch (...) {
        failure = UnknownException;
    }
    m_size = newSize;
    m_data = block;
    m_ownsData = true;
    m_foreign = false;
    m_failed = failure != NoFailure;
    if (m_failed) {
        m_data = nullptr;
        TYX_POST_ERROR(failureText(failure, m_size));
    }
    return m_data;
}

TyxBufferPtr TyxBuffer::clone() const { return TyxBufferPtr(new TyxBuffer(*this)); }

bool TyxBuffer::operator==(const TyxBuffer &other) const
{
    if (m_size != other.m_size)
        return false;
    if (!m_data || !other.m_data)
        return !m_data && !other.m_data;
    return m_data == other.m_data || std::memcmp(m_data, other.m_data, m_size) == 0;
}

bool TyxBufferPtrVariant::isEqual(const TyxVariantIF &other) const
{
    TyxBufferPtr converted;
    if (!other.value(type(), &converted))
        return false;
    if (converted.get() == m_value.get())
        return true;
    return converted && m_value && *converted == *m_value;
}

namespace internal {

bool TyxDefaultCasts<TyxBufferPtr>::toString(const TyxBufferPtr &value, TyxString &text)
{
    // The null pointer keeps the short form of the conversion matrix.
    if (!value) {
        text = L"0x0";
        return true;
    }
    char digits[32];
    std::snprintf(digits, sizeof digits, "0x%08" PRIxPTR, reinterpret_cast<uintptr_t>(value.get()));
    text = digits;
    return true;
}

bool TyxDefaultCasts<TyxBufferPtr>::fromString(const TyxString &, TyxBufferPtr &value)
{
    value = nullptr;
    return false;
}

} // namespace internal

} // namespace tyx
