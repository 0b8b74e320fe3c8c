// Keyed object: the process-wide key counter and the name rule.
#include <tyx/TyxKeyedObject.h>

#include <atomic>

namespace tyx {

namespace {

// The counter is atomic, so keys taken on several threads at once stay
// distinct until it wraps after 2^32 - 1 keys.
TyxKey nextKey()
{
    static std::atomic<unsigned int> counter{TyxKey::INVALID};
    unsigned int current = counter.load();
    TyxKey next;
    do {
        next = TyxKey(current);
        ++next;
    } while (!counter.compare_exchange_weak(current, next.value()));
    return next;
}

// The name is kept as given; only an empty one takes the key's text.
TyxString nameOrKey(const TyxString &name, const TyxKey &key)
{
    return name.empty() ? static_cast<TyxString>(key) : name;
}

} // namespace

TyxKeyedObject::TyxKeyedObject(const TyxKey &key, const TyxString &name)
    : m_key(key), m_name(nameOrKey(name, key))
{
}

TyxKeyedObject::TyxKeyedObject(const TyxString &name) : m_key(nextKey()), m_name(nameOrKey(name, m_key)) {}

TyxKeyedObject::~TyxKeyedObject() = default;

TyxString TyxKeyedObject::className() const { return L"TyxKeyedObject"; }

} // namespace tyx
