#pragma once

#include <QByteArray>

namespace quenvolta::test
{

/// A dump of a repository with so many revisions of one file.
inline QByteArray DumpOf(int revisions)
{
    QByteArray dump = "SVN-fs-dump-format-version: 2\n\nUUID: 7bf7a5ef-cabf-0310-b7d4-93df341afa7e\n\n";
    const QByteArray noProperties = "PROPS-END\n";
    for (int revision = 0; revision <= revisions; ++revision) {
        dump += "Revision-number: " + QByteArray::number(revision) +
                "\nProp-content-length: 10\nContent-length: 10\n\n" + noProperties + '\n';
        if (revision == 0)
            continue;
        const QByteArray text = "revision " + QByteArray::number(revision) + '\n';
        dump += QByteArray("Node-path: file\nNode-kind: file\nNode-action: ") + (revision == 1 ? "add" : "change") +
                "\nProp-content-length: 10\nText-content-length: " + QByteArray::number(text.size()) +
                "\nContent-length: " + QByteArray::number(text.size() + 10) + "\n\n" + noProperties + text + "\n\n";
    }
    return dump;
}

} // namespace quenvolta::test
