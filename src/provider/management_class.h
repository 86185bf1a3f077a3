#pragma once

#include "provider/method_call.h"

#include <QHash>
#include <QString>

#include <functional>
#include <optional>

namespace quenvolta
{

/// One class of the server as the provider carries it out: its instances and its methods.
/// Everything throws ProviderError.
class ManagementClass
{
public:
    using Handler = std::function<void(MethodCall&)>;
    using Keys = QHash<QString, QString>;

    virtual ~ManagementClass() = default;

    /// The instance with these keys; nothing when there is none.
    virtual std::optional<InstanceRow> Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                           CallContext& context);

    /// Hands every instance to the context's row sink. Classes without instances of their own refuse.
    virtual void Enumerate(const ClassDefinitionPtr& definition, CallContext& context);

    /// The method's handler, or null when the provider doesn't carry it out.
    const Handler* FindHandler(const QString& method) const;

    /// What a method does. What changes the server must be recognised when it is repeated; an activity changes it too,
    /// may take very long, and so is carried out in a process of its own while other calls are answered.
    enum class Effect { Reads, Changes, Activity };

    /// Reads for a method without a handler.
    Effect EffectOf(const QString& method) const { return m_methods.value(method).effect; }

    /// Gives a method its handler. A class's methods may come from several groups, each an object of its own that adds
    /// its handlers here and outlives the class.
    void Handle(const QString& method, Effect effect, Handler handler);

private:
    struct Method {
        Effect effect = Effect::Reads;
        Handler handler;
    };

    QHash<QString, Method> m_methods;
};

} // namespace quenvolta
