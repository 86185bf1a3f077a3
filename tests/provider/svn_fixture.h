#pragma once

#include "provider/svn/repository_store.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

/// An empty folder of repositories beside a folder that nothing may touch, and Subversion's own programs to check with.
class SvnFixture : public testing::Test
{
protected:
    /// Runs a program to its end; its standard output. A failure fails the test.
    static QString Run(const QString& program, const QStringList& arguments)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
        environment.insert(u"HOME"_s, QDir::tempPath() + u"/quenvolta-no-home"_s); // not the tester's own settings
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
        return QString::fromUtf8(process.readAllStandardOutput());
    }

    QString PathOf(const QString& name) const { return m_root + u'/' + name; }
    QString UrlOf(const QString& name) const { return u"file://"_s + PathOf(name); }

    void MakeRepository(const QString& name) const { Run(u"svnadmin"_s, {u"create"_s, PathOf(name)}); }

    static void Write(const QString& path, const QByteArray& content)
    {
        QFile::remove(path); // some of a repository's files are read-only
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    /// Every path in the temporary folder with its size and time: equal when nothing was touched.
    QStringList Listing() const
    {
        QStringList paths;
        QDirIterator entries(m_temporary.path(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                             QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            const QFileInfo entry(entries.next());
            paths << entry.filePath() + u' ' + QString::number(entry.size()) + u' ' +
                         entry.lastModified().toString(Qt::ISODateWithMs);
        }
        paths.sort();
        return paths;
    }

    QStringList HiddenNames() const
    {
        return QDir(m_root).entryList({u".*"_s}, QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    QStringList ListedNames() const
    {
        QStringList names;
        for (const RepositoryRecord& record : m_store.List())
            names << record.name;
        return names;
    }

    /// The error that `operation` throws; one of code 0 when it throws none.
    template <typename Operation>
    static ProviderError ErrorOf(Operation operation)
    {
        try {
            operation();
        } catch (const ProviderError& error) {
            return error;
        }
        return ProviderError(S_OK, {});
    }

    QTemporaryDir m_temporary;
    QString m_root = m_temporary.path() + u"/root"_s;
    QString m_outside = m_temporary.path() + u"/outside"_s;
    RepositoryStore m_store{m_root};

    void SetUp() override
    {
        ASSERT_TRUE(QDir().mkpath(m_root) && QDir().mkpath(m_outside));
        Write(m_outside + u"/precious"_s, "keep");
    }
};

} // namespace quenvolta
