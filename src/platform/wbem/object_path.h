#pragma once

#include "platform/hresult.h"
#include "platform/wbem/wbem_class_object.h"

#include <QList>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

namespace quenvolta
{

/// One key of an object path.
struct PathKey {
    QString name;
    QString value;

    bool operator==(const PathKey&) const = default;
};

/// Builds and reads object paths, in the syntax Class.Key="value",Key2="value2" or Class=@ for a singleton.
/// Quotes and backslashes inside a value are escaped with a backslash.
class IWbemPath
{
public:
    virtual ~IWbemPath() = default;
    virtual HRESULT SetClassName(const QString& name) = 0;
    virtual HRESULT GetClassName(QString* name) const = 0;
    /// Adds or replaces a key of string type.
    virtual HRESULT SetKey(const QString& name, int flags, CimType type, const QString& value) = 0;
    virtual HRESULT GetKeys(QList<PathKey>* keys) const = 0;
    virtual HRESULT SetSingleton() = 0;
    virtual bool IsSingleton() const = 0;
    /// The path relative to the namespace (flags 0). `length` is the buffer's length in characters, the
    /// terminating zero counted; WBEM_E_BUFFER_TOO_SMALL and the needed length when `buffer` is null or short.
    virtual HRESULT GetText(int flags, std::uint32_t* length, char16_t* buffer) const = 0;
    /// Reads a path; WBEM_E_INVALID_OBJECT_PATH when it is none, and nothing is changed then.
    virtual HRESULT SetText(const QString& text) = 0;
};

/// An empty path.
std::shared_ptr<IWbemPath> CreateWbemPath();

/// The path of an instance by its class and its key properties; empty when a key is null or the class has none.
QString RelativePathOf(const class WbemObject& object);

} // namespace quenvolta
