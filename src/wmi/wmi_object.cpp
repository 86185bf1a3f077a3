#include "wmi/wmi_object.h"

#include "foundation/com_exception.h"
#include "wmi/server_date_time.h"
#include "wmi/variant_conversion.h"

#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// A value that must be of exactly one type; its failures have no context.
template <typename Value>
const Value& Exactly(const Variant& value)
{
    if (IsNullVariant(value))
        throw ComException(WBEM_E_NOT_FOUND);
    const Value* held = std::get_if<Value>(&value);
    if (!held)
        throw ComException(WBEM_E_TYPE_MISMATCH);
    return *held;
}

void RequirePresent(const Variant& value, const QString& name)
{
    if (IsNullVariant(value))
        throw ComException(WBEM_E_NOT_FOUND, nullptr, u"Cannot get property '%s'", name);
}

} // namespace

WMIObject::WMIObject(WbemObjectPtr handle)
    : m_handle(std::move(handle))
{
}

Variant WMIObject::Get(const QString& name) const
{
    Variant value;
    const HRESULT code = m_handle ? m_handle->Get(name, &value) : E_POINTER;
    if (Failed(code))
        throw ComException(code, nullptr, u"Cannot get property '%s'", name);
    return value;
}

// Lists have a hundred thousand values: they are not copied to be looked at.
template <typename Use>
auto WMIObject::WithValue(const QString& name, const Use& use) const
{
    const Variant* const held = m_handle ? m_handle->Find(name) : nullptr;
    return held ? use(*held) : use(Get(name));
}

void WMIObject::Put(const QString& name, const Variant& value)
{
    const HRESULT code = m_handle ? m_handle->Put(name, value) : E_POINTER;
    if (Failed(code))
        throw ComException(code, nullptr, u"Cannot set property '%s'", name);
}

bool WMIObject::IsNull(const QString& name) const
{
    return WithValue(name, IsNullVariant);
}

QString WMIObject::GetString(const QString& name) const
{
    return WithValue(name, [](const Variant& value) { return Exactly<QString>(value); });
}

bool WMIObject::GetBool(const QString& name) const
{
    return WithValue(name, [&](const Variant& value) {
        RequirePresent(value, name);
        bool converted = false;
        CheckResult(ToBool(value, &converted));
        return converted;
    });
}

std::uint32_t WMIObject::GetUInt32(const QString& name) const
{
    return WithValue(name, [&](const Variant& value) {
        RequirePresent(value, name);
        std::uint32_t converted = 0;
        CheckResult(ToUInt32(value, &converted));
        return converted;
    });
}

std::optional<std::int32_t> WMIObject::GetOptionalInt32(const QString& name) const
{
    const Variant value = Get(name);
    if (IsNullVariant(value))
        return std::nullopt;
    std::int32_t converted = 0;
    CheckResult(ToInt32(value, &converted));
    return converted;
}

WMIObject WMIObject::GetObject(const QString& name) const
{
    Variant value = Get(name);
    WbemObjectPtr* held = std::get_if<WbemObjectPtr>(&value);
    if (!held)
        throw ComException(DISP_E_TYPEMISMATCH);
    return WMIObject(std::move(*held));
}

QStringList WMIObject::GetStringArray(const QString& name) const
{
    return WithValue(name, [](const Variant& value) { return Exactly<QStringList>(value); });
}

QList<WMIObject> WMIObject::GetObjectArray(const QString& name) const
{
    return WithValue(name, [](const Variant& value) {
        const auto& handles = Exactly<QList<WbemObjectPtr>>(value);
        return QList<WMIObject>(handles.cbegin(), handles.cend());
    });
}

FileTime WMIObject::GetDateTime(const QString& name) const
{
    return ToFileTime(ParseServerDateTime(GetString(name)));
}

void WMIObject::PutString(const QString& name, const QString& value)
{
    Put(name, value);
}

void WMIObject::PutBool(const QString& name, bool value)
{
    Put(name, value);
}

void WMIObject::PutInt32(const QString& name, std::int32_t value)
{
    Put(name, value);
}

void WMIObject::PutStringArray(const QString& name, const QStringList& values)
{
    Put(name, values);
}

void WMIObject::PutObject(const QString& name, const WMIObject& value)
{
    Put(name, value.Handle());
}

void WMIObject::PutObjectArray(const QString& name, const QList<WMIObject>& values)
{
    QList<WbemObjectPtr> handles;
    handles.reserve(values.size());
    for (const WMIObject& value : values)
        handles.append(value.Handle());
    Put(name, handles);
}

bool WMIObject::InheritsFrom(const QString& className) const
{
    const HRESULT code = m_handle ? m_handle->InheritsFrom(className) : E_POINTER;
    CheckResult(code);
    return code == S_OK;
}

QString WMIObject::GetClassName() const
{
    return GetString(u"__CLASS"_s);
}

} // namespace quenvolta
