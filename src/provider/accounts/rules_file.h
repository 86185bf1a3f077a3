#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>

namespace quenvolta
{

/// The permission rules in the form that Subversion's authorization reads, in parts that can be checked apart.
struct RulesFile {
    struct Section {
        QByteArray text;          ///< its title and its lines
        QList<QByteArray> groups; ///< the names that these lines need defined
    };

    QMap<QByteArray, QByteArray> aliases; ///< names that can't stand in a rule as they are, by alias
    QMap<QByteArray, QByteArray> groups;  ///< the line that defines it, by name
    QList<Section> sections;

    /// The whole file.
    QByteArray Text() const;

    /// Has Subversion's library read every section that `before` doesn't hold as it is, in small pieces: reading costs
    /// the number of sections times that of names. ProviderError when the library refuses one.
    void Check(const QByteArray& before) const;
};

} // namespace quenvolta
