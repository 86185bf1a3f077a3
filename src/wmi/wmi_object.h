#pragma once

#include "foundation/file_time.h"
#include "platform/wbem/wbem_class_object.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace quenvolta
{

/// A shared handle of a management object, or none. A failed access is a ComException.
class WMIObject
{
public:
    WMIObject() = default;
    explicit WMIObject(WbemObjectPtr handle);
    WMIObject(const WMIObject&) = default;
    WMIObject(WMIObject&&) noexcept = default;
    WMIObject& operator=(const WMIObject&) = default;
    WMIObject& operator=(WMIObject&&) noexcept = default;
    virtual ~WMIObject() = default;

    bool IsEmpty() const { return !m_handle; }
    const WbemObjectPtr& Handle() const { return m_handle; }

    bool IsNull(const QString& name) const;
    /// Null and other types than text are failures without a context.
    QString GetString(const QString& name) const;
    bool GetBool(const QString& name) const;
    std::uint32_t GetUInt32(const QString& name) const;
    std::optional<std::int32_t> GetOptionalInt32(const QString& name) const;
    WMIObject GetObject(const QString& name) const;
    QStringList GetStringArray(const QString& name) const;
    QList<WMIObject> GetObjectArray(const QString& name) const;
    FileTime GetDateTime(const QString& name) const;

    void PutString(const QString& name, const QString& value);
    void PutBool(const QString& name, bool value);
    void PutInt32(const QString& name, std::int32_t value);
    void PutStringArray(const QString& name, const QStringList& values);
    void PutObject(const QString& name, const WMIObject& value);
    void PutObjectArray(const QString& name, const QList<WMIObject>& values);

    /// True for an instance of the class or of one derived from it.
    bool InheritsFrom(const QString& className) const;
    QString GetClassName() const;

private:
    template <typename Use>
    auto WithValue(const QString& name, const Use& use) const;
    Variant Get(const QString& name) const;
    void Put(const QString& name, const Variant& value);

    WbemObjectPtr m_handle;
};

} // namespace quenvolta
