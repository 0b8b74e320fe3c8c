// Groups of command-line arguments of which at most one may be given.
#pragma once

#include <vector>

#include <tyx/TyxClArg.h>
#include <tyx/TyxObject.h>

namespace tyx {

/// Keeps the exclusive groups of a parser.
class TYX_EXPORT TyxClXorHandler : public TyxObject {
public:
    TyxClXorHandler() = default;
    ~TyxClXorHandler() override;
    /// "TyxClXorHandler".
    TyxString className() const override;

    void add(std::vector<TyxClArgPtr> &group);
    /// Called when \p arg took an element: throws when another member of its
    /// group is set, marks the others, and answers how many required places
    /// this satisfies.
    int check(const TyxClArgPtr &arg);
    bool contains(const TyxClArgPtr &arg) const;
    const std::vector<std::vector<TyxClArgPtr>> &groups() const { return m_groups; }

private:
    std::vector<std::vector<TyxClArgPtr>> m_groups;
};

} // namespace tyx
