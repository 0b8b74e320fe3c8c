// The implementation of the variant that holds a bool.
#include <tyx/TyxBoolVariant.h>

namespace tyx {

std::wostream &TyxBoolVariant::write(std::wostream &os) const
{
    const auto flags = os.flags();
    os << std::boolalpha << m_value;
    os.flags(flags);
    return os;
}

std::wistream &TyxBoolVariant::read(std::wistream &is)
{
    const auto flags = is.flags();
    is >> std::boolalpha >> m_value;
    is.flags(flags);
    return is;
}

} // namespace tyx
