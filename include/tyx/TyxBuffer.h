// Reference-counted block of sample memory.
#pragma once

#include <atomic>
#include <cstdint>

#include <tyx/TyxDataType.h>
#include <tyx/TyxGlobal.h>
#include <tyx/TyxRefCounted.h>
#include <tyx/TyxSmartPtr.h>
#include <tyx/TyxVariantImpl.h>

namespace tyx {

TYX_DECLARE_SMART_PTR(TyxBuffer);

/// A block of memory of a given size in bytes, owned or wrapped. Blocks of
/// 2 MiB and more are aligned to 2 MiB and backed by huge pages where the
/// kernel allows, so that first touches of a fresh block stay cheap.
///
/// A buffer is empty (no block, size 0), sized (no block), holding a block,
/// or failed (the last allocation failed; isValid() is false). The data type
/// is a label for users of the block; the buffer never interprets it.
class TYX_EXPORT TyxBuffer : public TyxRefCounted {
public:
    /// An owning buffer of \p size bytes, allocated at once with
    /// \p allocateNow.
    explicit TyxBuffer(uint64_t size = 0, bool allocateNow = false);
    /// Wraps \p data of \p size bytes, freed on destruction only with
    /// \p takeOwnership; \p data must then come from malloc. A null \p data
    /// gives an owning, unallocated buffer.
    TyxBuffer(uint64_t size, void *data, bool takeOwnership);
    /// Copies the contents into a block of its own.
    TyxBuffer(const TyxBuffer &other);
    /// Copies size, contents and label; a block of the same size is reused,
    /// even a wrapped one.
    TyxBuffer &operator=(const TyxBuffer &other);
    ~TyxBuffer() override;

    /// Obtains the block if there is none and the size is not 0. Returns the
    /// block; null for size 0 and on failure, which is posted as an error.
    void *allocate();
    /// Frees an owned block. Afterwards the buffer owns no block, is not
    /// failed and carries no label; the size stays. True when memory was
    /// freed.
    bool deallocate();
    /// Resizes to \p newSize bytes. With \p keepContents an existing block's
    /// leading bytes are kept, in a block the buffer then owns; otherwise the
    /// old contents go and a fresh block is allocated. Returns the block;
    /// null on failure, which is posted as an error.
    void *reallocate(uint64_t newSize, bool keepContents);
    /// A new buffer holding a copy of this one.
    TyxBufferPtr clone() const;
    /// Makes the buffer a window on \p data of \p size bytes that it does
    /// not own, freeing an owned block first; the label stays. Re-pointing a
    /// window allocates nothing.
    void wrap(uint64_t size, void *data);

    uint64_t size() const { return m_size; }
    bool ownsData() const { return m_ownsData; }
    /// False after a failed allocation.
    bool isValid() const { return !m_failed; }
    const TyxDataType &dataType() const { return m_dataType; }
    void setDataType(const TyxDataType &type) { m_dataType = type; }

    /// The block, null while there is none.
    void *data() { return m_data; }
    const void *data() const { return m_data; }
    operator void *() { return m_data; }
    operator const void *() const { return m_data; }

    /// Same size and either both without a block or both with equal bytes.
    /// Flags and labels are not compared.
    bool operator==(const TyxBuffer &other) const;
    bool operator!=(const TyxBuffer &other) const { return !(*this == other); }

private:
    // Set by every constructor; kept for layout compatibility, never read.
    std::atomic<bool> m_alive{true};
    bool m_ownsData = true;
    bool m_foreign = false;
    bool m_failed = false;
    void *m_data = nullptr;
    uint64_t m_size = 0;
    TyxDataType m_dataType;
};

/// The variant of a TyxBufferPtr (code 18).
class TYX_EXPORT TyxBufferPtrVariant : public TyxVariantImpl<TyxBufferPtr> {
public:
    using TyxVariantImpl<TyxBufferPtr>::TyxVariantImpl;

    /// Equal when both point at the same buffer, or both are set and the
    /// buffers have the same size and bytes.
    bool isEqual(const TyxVariantIF &other) const override;
};

namespace internal {

template <>
struct TyxVariantTraits<TyxBufferPtr>
    : TyxBuiltinVariantTraits<TyxBufferPtr, TyxMetaType::BufferPtr, TyxBufferPtrVariant> {
};

/// A buffer pointer has a text form but cannot be made from text.
template <>
struct TYX_EXPORT TyxDefaultCasts<TyxBufferPtr> {
    /// "0x" and the address in hexadecimal, at least 8 digits; "0x0" for the
    /// null pointer.
    static bool toString(const TyxBufferPtr &value, TyxString &text);
    /// Resets \p value and fails.
    static bool fromString(const TyxString &text, TyxBufferPtr &value);
    static void getDefault(TyxBufferPtr &value) { value = nullptr; }
};

/// True when not null.
template <>
struct TyxCast<TyxBufferPtr, bool> {
    static bool cast(const TyxBufferPtr &from, bool &to)
    {
        to = static_cast<bool>(from);
        return true;
    }
};

} // namespace internal

} // namespace tyx
