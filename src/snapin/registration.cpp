#include "snapin/registration.h"

#include "foundation/registry_changes.h"
#include "foundation/win32_exception.h"

#include <array>

namespace quenvolta
{

namespace
{

struct Value {
    QStringView key;
    QStringView name;
    QStringView text;
};

constexpr QStringView kModule = u"%MODULE%";

#define REG_VALUE(key, name, text)
#define REG_FORCE_REMOVE(key)
#define REG_KEY(key) QStringView(u"" key),
constexpr std::array kKeys{
#include "resources/registration.def"
};
#undef REG_KEY
#define REG_KEY(key)
#undef REG_VALUE
#define REG_VALUE(key, name, text) Value{u"" key, u"" name, u"" text},
constexpr std::array kValues{
#include "resources/registration.def"
};
#undef REG_VALUE
#define REG_VALUE(key, name, text)
#undef REG_FORCE_REMOVE
#define REG_FORCE_REMOVE(key) QStringView(u"" key),
constexpr std::array kForceRemoved{
#include "resources/registration.def"
};
#undef REG_FORCE_REMOVE
#undef REG_VALUE
#undef REG_KEY

void Check(Win32Error error, QStringView key)
{
    if (error != ERROR_SUCCESS)
        throw Win32Exception(error, u"Cannot create registry key %s", key.toString());
}

} // namespace

void RegisterSnapIn(Registry& localMachine, const QString& module)
{
    RegistryChanges changes(localMachine);
    for (const QStringView key : kKeys)
        Check(localMachine.CreateKey(key.toString()), key);
    for (const Value& value : kValues) {
        const QString key = value.key.toString();
        Check(localMachine.CreateKey(key), key);
        const QString text = value.text == kModule ? module : value.text.toString();
        Check(localMachine.SetValue(key, value.name.toString(), RegistryValue::FromString(text)), key);
    }
    changes.Commit();
}

void UnregisterSnapIn(Registry& localMachine)
{
    RegistryChanges changes(localMachine);
    for (const QStringView key : kForceRemoved) {
        const Win32Error error = localMachine.DeleteTree(key.toString());
        if (error != ERROR_SUCCESS && error != ERROR_FILE_NOT_FOUND)
            throw Win32Exception(error, u"Cannot delete registry key %s", key.toString());
    }
    changes.Commit();
}

} // namespace quenvolta
