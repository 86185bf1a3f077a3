#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

namespace quenvolta
{

/// What the program was asked to do.
struct CommandLine {
    enum class Task {
        OpenWindow,
        RenderPicture,
        /// Write the snap-in's entries into the registry, or remove them.
        Register,
        Unregister,
        /// Print `text` to the standard output, and end.
        Print,
        /// Print `text` to the error output, and end with a failure.
        Refuse,
    };

    Task task = Task::OpenWindow;
    QString text = {};
    /// All arguments, for the snap-in.
    QStringList arguments = {};
    bool dark = false;
    /// The computer below whose node the server is shown, empty for this one; nothing for the server alone.
    std::optional<QString> extend = {};
    /// The console file to open; empty for a new console.
    QString consoleFile = {};
    QString pictureFile = {};
    QSize pictureSize{980, 640};
    /// The names of the items from the root to the one that the picture shows, where they are given.
    std::optional<QStringList> pictureSelect = {};
};

/// Reads the program's arguments, the program's own name first. Needs a QCoreApplication.
CommandLine ParseCommandLine(const QStringList& arguments);

} // namespace quenvolta
