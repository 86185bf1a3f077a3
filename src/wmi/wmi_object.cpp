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
Value Exactly(Variant&& value)
{
    if (IsNullVariant(value))
        throw ComException(WBEM_E_NOT_FOUND);
    Value* held = std::get_if<Value>(&value);
    if (!held)
        throw ComException(WBEM_E_TYPE_MISMATCH);
    return std::move(*held);
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

Variant WMIObject::GetPresent(const QString& name) const
{
    Variant value = Get(name);
    if (IsNullVariant(value))
        throw ComException(WBEM_E_NOT_FOUND, nullptr, u"Cannot get property '%s'", name);
    return value;
}

void WMIObject::Put(const QString& name, const Variant& value)
{
    const HRESULT code = m_handle ? m_handle->Put(name, value) : E_POINTER;
    if (Failed(code))
        throw ComException(code, nullptr, u"Cannot set property '%s'", name);
}

bool WMIObject::IsNull(const QString& name) const
{
    return IsNullVariant(Get(name));
}

QString WMIObject::GetString(const QString& name) const
{
    return Exactly<QString>(Get(name));
}

bool WMIObject::GetBool(const QString& name) const
{
    bool converted = false;
    CheckResult(ToBool(GetPresent(name), &converted));
    return converted;
}

std::uint32_t WMIObject::GetUInt32(const QString& name) const
{
    std::uint32_t converted = 0;
    CheckResult(ToUInt32(GetPresent(name), &converted));
    return converted;
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
    return Exactly<QStringList>(Get(name));
}

QList<WMIObject> WMIObject::GetObjectArray(const QString& name) const
{
    QList<WbemObjectPtr> handles = Exactly<QList<WbemObjectPtr>>(Get(name));
    QList<WMIObject> objects;
    objects.reserve(handles.size());
    for (WbemObjectPtr& handle : handles)
        objects.emplaceBack(std::move(handle));
    return objects;
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
