#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace quenvolta
{

/// A run of httpd's program that ends by itself, at most after half a minute: a question, or a start that leaves the
/// service behind.
class ApacheCommand
{
public:
    struct Outcome {
        bool succeeded = false;
        /// What the program said, its standard and its error output together.
        QString output;
    };

    ApacheCommand(const QString& program, const QStringList& arguments);

    /// The service that is started may bind ports below 1024.
    void AllowLowPorts() { m_lowPorts = true; }

    Outcome Run() const;

    /// Gives a process surroundings that depend on nothing of this one's.
    static void Prepare(QProcess& process);

private:
    QString m_program;
    QStringList m_arguments;
    bool m_lowPorts = false;
};

} // namespace quenvolta
