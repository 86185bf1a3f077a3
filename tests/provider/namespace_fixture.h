#pragma once

#include "platform/wbem/object_path.h"
#include "platform/wbem/wbem_object.h"
#include "provider/collected_rows.h"
#include "provider/management_namespace.h"
#include "provider/provider_error.h"
#include "provider/server_namespaces.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <memory>

namespace quenvolta
{

using namespace Qt::StringLiterals;

/// The classes of a server in an empty folder, called without a channel between.
class NamespaceFixture : public ::testing::Test
{
protected:
    NamespaceFixture()
        : data(folder.filePath(u"data"_s))
        , server(MakeServerNamespace(data, ServedVersion(u"3.3.1"_s)))
    {
    }

    CallContext Context() { return {server->Classes(), rows, {}, request, repeated}; }

    WbemObjectPtr Exec(const QString& path, const QString& method, const QList<std::pair<QString, Variant>>& in)
    {
        CallContext context = Context();
        auto parameters = std::make_shared<ClassDefinition>();
        QList<Variant> values;
        for (const auto& [name, value] : in) {
            parameters->properties.append({name, TypeOf(value), false});
            values.append(value);
        }
        return server->ExecMethod(path, method, std::make_shared<WbemObject>(parameters, values), context);
    }

    HRESULT CodeOf(const QString& path, const QString& method, const QList<std::pair<QString, Variant>>& in)
    {
        try {
            Exec(path, method, in);
        } catch (const ProviderError& error) {
            EXPECT_FALSE(error.Description().isEmpty());
            EXPECT_LT(error.Description().size(), 600);
            return error.Code();
        }
        return S_OK;
    }

    WbemObjectPtr GetObject(const QString& path)
    {
        CallContext context = Context();
        return server->GetObject(path, context);
    }

    QStringList Names(const QString& className)
    {
        CallContext context = Context();
        rows.instances.clear();
        server->EnumerateInstances(className, context);
        QStringList names;
        for (const WbemObjectPtr& each : std::as_const(rows.instances))
            names.append(Text(each, u"Name"_s));
        return names;
    }

    static QString Text(const WbemObjectPtr& object, const QString& property)
    {
        Variant value;
        EXPECT_EQ(object->Get(property, &value, nullptr), S_OK) << property.toStdString();
        const QString* text = std::get_if<QString>(&value);
        return text ? *text : QString();
    }

    static CimType TypeOf(const Variant& value)
    {
        constexpr CimType kTypes[] = {CimType::String, CimType::Boolean, CimType::Sint32,      CimType::Uint32,
                                      CimType::String, CimType::Object,  CimType::StringArray, CimType::ObjectArray};
        return kTypes[value.index()];
    }

    QTemporaryDir folder;
    DataFolder data;
    std::unique_ptr<ManagementNamespace> server;
    CollectedRows rows;
    QUuid request = QUuid::createUuid();
    bool repeated = false;
};

} // namespace quenvolta
