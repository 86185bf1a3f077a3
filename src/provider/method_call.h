#pragma once

#include "platform/wbem/class_table.h"
#include "platform/wbem/wbem_object.h"
#include "provider/instance_row.h"
#include "provider/row_sink.h"
#include "provider/svn/svn_cancel.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace quenvolta
{

/// The activities that run.
class ActivityControl
{
public:
    virtual ~ActivityControl() = default;
    /// Asks the activity of this identifier to stop; its own call tells how it ended. False when none has it.
    virtual bool Cancel(const QString& id) = 0;
};

/// What a call may use beside its parameters.
struct CallContext {
    const ClassTable& classes;
    RowSink& rows;
    CancelCheck cancel;
    /// The request's identity: the same when the console repeats it after a lost connection.
    QUuid requestId;
    /// The request was begun before, by a process that ended without an answer.
    bool repeated = false;
    /// Null where no activities are run.
    ActivityControl* activities = nullptr;
};

/// One call of a method, its parameters checked against the class: each is there and of its type, or null.
class MethodCall
{
public:
    /// `in` may be null when the method has no input; `out` is the definition of the output parameters or null.
    MethodCall(const MethodDefinition& method, const QString& className, QHash<QString, QString> keys,
               const WbemObject* in, CallContext& context);

    /// The value of a key of the object that the method was called on.
    QString Key(const QString& name) const { return m_keys.value(name); }

    /// An input parameter; ProviderError (WBEM_E_INVALID_METHOD_PARAMETERS) when it is null.
    QString String(QStringView name) const { return Required<QString>(name); }
    QStringList StringArray(QStringView name) const { return Required<QStringList>(name); }
    QList<WbemObjectPtr> ObjectArray(QStringView name) const { return Required<QList<WbemObjectPtr>>(name); }
    bool Bool(QStringView name) const { return Required<bool>(name); }
    qint32 Int32(QStringView name) const { return Required<std::int32_t>(name); }
    /// The same, or nothing when it is null or the served version does not have it.
    template <typename T>
    std::optional<T> Optional(QStringView name) const
    {
        const Variant* value = Find(name);
        const T* typed = value ? std::get_if<T>(value) : nullptr;
        return typed ? std::optional<T>(*typed) : std::nullopt;
    }

    /// Sets an output parameter.
    void Return(QStringView name, Variant value);
    /// Appends an element to an output parameter that is an array of objects. One without elements is empty, not null.
    void ReturnElement(const QString& name, const InstanceRow& row);

    CallContext& Context() const { return m_context; }
    /// The output parameters, or null when the method has none.
    WbemObjectPtr Output() const { return m_out ? m_out->ToObject() : nullptr; }

private:
    const Variant* Find(QStringView name) const;
    template <typename T>
    T Required(QStringView name) const
    {
        std::optional<T> value = Optional<T>(name);
        if (!value)
            RefuseMissing(name);
        return *value;
    }
    [[noreturn]] void RefuseMissing(QStringView name) const;

    const MethodDefinition& m_method;
    QString m_className;
    QHash<QString, QString> m_keys;
    const WbemObject* m_in;
    CallContext& m_context;
    std::optional<InstanceRow> m_out;
};

} // namespace quenvolta
