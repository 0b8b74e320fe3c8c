// Table of named integers behind the code classes.
#include <tyx/TyxEnum.h>

#include <tyx/TyxVariant.h>

namespace tyx {

TyxEnum::Item::Item(int value, const TyxString &name) : value(value), name(name) {}

TyxEnum::Item::Item(int value, const TyxString &name, const TyxVariant &data)
    : value(value), name(name), data(std::make_unique<TyxVariant>(data))
{
}

TyxEnum::Item::Item(const Item &other)
    : value(other.value), name(other.name),
      data(other.data ? std::make_unique<TyxVariant>(*other.data) : nullptr)
{
}

TyxEnum::Item &TyxEnum::Item::operator=(const Item &other)
{
    if (this != &other) {
        value = other.value;
        name = other.name;
        data = other.data ? std::make_unique<TyxVariant>(*other.data) : nullptr;
    }
    return *this;
}

TyxEnum::Item::~Item() = default;

TyxEnum::TyxEnum(const Item *items, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        insert(items[i]);
}

void TyxEnum::insert(const Item &item)
{
    if (m_items.find(item.value) != m_items.end())
        return;
    for (const TyxString &name : m_names) {
        if (isEqual(name, item.name))
            return;
    }
    m_items.emplace(item.value, item);
    m_names.push_back(item.name);
}

TyxString TyxEnum::toString(int value) const
{
    auto it = m_items.find(value);
    return it == m_items.end() ? TyxString() : it->second.name;
}

int TyxEnum::fromString(const TyxString &name) const
{
    for (const auto &[value, item] : m_items) {
        if (isEqual(item.name, name))
            return value;
    }
    return INVALID_ENUM();
}

const TyxVariant &TyxEnum::data(int value) const
{
    static const TyxVariant invalid;
    auto it = m_items.find(value);
    if (it == m_items.end() || !it->second.data)
        return invalid;
    return *it->second.data;
}

void TyxEnum::setData(int value, const TyxVariant &data)
{
    auto it = m_items.find(value);
    if (it != m_items.end())
        it->second.data = std::make_unique<TyxVariant>(data);
}

bool TyxEnum::operator==(const TyxEnum &other) const
{
    if (m_items.size() != other.m_items.size())
        return false;
    auto a = m_items.begin();
    auto b = other.m_items.begin();
    for (; a != m_items.end(); ++a, ++b) {
        if (a->second != b->second)
            return false;
    }
    return true;
}

} // namespace tyx
