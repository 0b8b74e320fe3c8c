// Source that fills a metadata set on demand.
#pragma once

#include <tyx/TyxRefCounted.h>
#include <tyx/TyxSmartPtr.h>

namespace tyx {

class TyxMetaDataSet;

/// Fills a set the first time its subsets or its fields are read. A reader
/// writes through the set's ordinary writing operations.
class TYX_EXPORT TyxMetaDataReader : public TyxRefCounted {
public:
    ~TyxMetaDataReader() override;

    /// Reads the subsets of \p set; 0 on success, 1 on failure.
    virtual int readSubsets(TyxMetaDataSet &set) = 0;
    /// Reads the fields of \p set; 0 on success, 1 on failure.
    virtual int readFields(TyxMetaDataSet &set) = 0;
    /// Whether reading is possible at present.
    virtual bool canRead() const = 0;

protected:
    TyxMetaDataReader() = default;
};

TYX_DECLARE_SMART_PTR_ONLY(TyxMetaDataReader);

} // namespace tyx
