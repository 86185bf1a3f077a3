#pragma once

#include "provider/collected_rows.h"
#include "provider/provider_error.h"
#include "provider/server_namespaces.h"

#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

/// A server of the newest version in a folder of its own, called as a console calls it.
class ServerFixture : public testing::Test
{
protected:
    using Parameters = QList<std::pair<QString, Variant>>;

    static Variant Value(const WbemObjectPtr& object, const QString& property)
    {
        Variant value;
        EXPECT_EQ(object->Get(property, &value, nullptr), S_OK) << property.toStdString();
        return value;
    }
    static QString Text(const WbemObjectPtr& object, const QString& property)
    {
        const Variant value = Value(object, property);
        const QString* text = std::get_if<QString>(&value);
        return text ? *text : u"(no text)"_s;
    }

    /// Calls a method; its output. What it hands out in elements is in m_rows.
    WbemObjectPtr Exec(const QString& path, const QString& method, const Parameters& in = {})
    {
        m_rows = {};
        CallContext context{m_server->Classes(), m_rows, {}, {}, false};
        context.repeated = m_repeated;
        const QString className = path.section(u'.', 0, 0);
        const MethodDefinition* definition = m_server->Classes().Find(className)->FindMethod(method);
        const auto parameters = definition->in ? std::make_shared<WbemObject>(definition->in) : nullptr;
        for (const auto& [name, value] : in)
            EXPECT_EQ(parameters->Put(name, value), S_OK) << name.toStdString();
        return m_server->ExecMethod(path, method, parameters, context);
    }

    /// The error that a call ends with; one of code 0 when it succeeds.
    ProviderError ErrorOf(const QString& path, const QString& method, const Parameters& in)
    {
        try {
            Exec(path, method, in);
        } catch (const ProviderError& error) {
            EXPECT_FALSE(error.Description().isEmpty());
            return error;
        }
        return ProviderError(S_OK, {});
    }

    /// Runs a program to its end; what it wrote. A failure fails the test.
    static QByteArray Run(const QString& program, const QStringList& arguments, const QByteArray& input = {})
    {
        QProcess process;
        process.start(program, arguments);
        process.write(input);
        process.closeWriteChannel();
        EXPECT_TRUE(process.waitForFinished(60'000)) << program.toStdString();
        EXPECT_EQ(process.exitCode(), 0) << arguments.join(u' ').toStdString() << '\n'
                                         << process.readAllStandardError().constData();
        return process.readAllStandardOutput();
    }

    QTemporaryDir m_folder;
    DataFolder m_data{m_folder.filePath(u"data"_s)};
    std::unique_ptr<ManagementNamespace> m_server = MakeServerNamespace(m_data, ServedVersion(u"3.3.1"_s));
    CollectedRows m_rows;
    bool m_repeated = false;
};

} // namespace quenvolta
