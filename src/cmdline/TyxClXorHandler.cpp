// Exclusive groups of arguments.
#include <tyx/TyxClXorHandler.h>

#include <algorithm>

#include "core/TyxPost.h"

namespace tyx {

namespace {

bool holds(const std::vector<TyxClArgPtr> &group, const TyxClArgPtr &arg)
{
    return std::any_of(group.begin(), group.end(),
                       [&](const TyxClArgPtr &a) { return a.get() == arg.get(); });
}

} // namespace

TyxClXorHandler::~TyxClXorHandler() = default;

TyxString TyxClXorHandler::className() const { return L"TyxClXorHandler"; }

void TyxClXorHandler::add(std::vector<TyxClArgPtr> &group) { m_groups.push_back(group); }

bool TyxClXorHandler::contains(const TyxClArgPtr &arg) const
{
    return std::any_of(m_groups.begin(), m_groups.end(),
                       [&](const std::vector<TyxClArgPtr> &group) { return holds(group, arg); });
}

int TyxClXorHandler::check(const TyxClArgPtr &arg)
{
    for (const std::vector<TyxClArgPtr> &group : m_groups) {
        if (!holds(group, arg))
            continue;
        for (const TyxClArgPtr &other : group) {
            if (other.get() != arg.get() && other->isValueSet())
                TYX_THROW_ERROR(L"Mutually exclusive argument already set: " + other->longID());
        }
        for (const TyxClArgPtr &other : group) {
            if (other.get() != arg.get())
                other->setXor();
        }
        if (arg->allowMore())
            return 0;
        // One member satisfies every required place of its group at once.
        return static_cast<int>(std::count_if(group.begin(), group.end(), [](const TyxClArgPtr &a) {
            return a->properties().flags().isRequired();
        }));
    }
    // A list argument counts once, at its first value.
    return arg->properties().flags().isRequired() && !arg->allowMore() ? 1 : 0;
}

} // namespace tyx
