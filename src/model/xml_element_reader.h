#pragma once

#include <QFile>
#include <QString>
#include <QXmlStreamReader>

namespace quenvolta
{

/// Pulls elements by their depth out of an XML file. The root has depth 0. What can't be read is a SimpleException;
/// a document type is refused, so there are no entities but those of XML itself.
class XmlElementReader
{
public:
    explicit XmlElementReader(const QString& path);

    /// Goes on to the next element of exactly this depth. False when one less deep comes first, or the end.
    bool NextElement(int depth);
    QString LocalName() const { return m_reader.name().toString(); }
    /// The text of the element up to its end.
    QString Value();

private:
    void ReadNext();

    QFile m_file;
    QXmlStreamReader m_reader;
    int m_depth = -1; ///< of the current element
};

} // namespace quenvolta
