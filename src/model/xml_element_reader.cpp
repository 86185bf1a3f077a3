#include "model/xml_element_reader.h"

#include "foundation/simple_exception.h"

namespace quenvolta
{

namespace
{

constexpr char16_t kCannotOpen[] = u"Cannot create stream to read '%s'";
constexpr char16_t kCannotRead[] = u"Cannot read next xml element";
constexpr char16_t kNoElement[] = u"Cannot get a value of non-tag element";

} // namespace

XmlElementReader::XmlElementReader(const QString& path)
    : m_file(path)
{
    if (path.isEmpty() || !m_file.open(QIODevice::ReadOnly))
        throw SimpleException(kCannotOpen, path);
    m_reader.setDevice(&m_file);
}

bool XmlElementReader::NextElement(int depth)
{
    while (!m_reader.atEnd()) {
        ReadNext();
        if (m_reader.isStartElement() && m_depth <= depth)
            return m_depth == depth;
    }
    return false;
}

QString XmlElementReader::Value()
{
    if (!m_reader.isStartElement())
        throw SimpleException(kNoElement);
    const int depth = m_depth;
    QString text;
    while (m_depth >= depth) {
        ReadNext();
        if (m_reader.isCharacters())
            text += m_reader.text();
    }
    return text;
}

void XmlElementReader::ReadNext()
{
    switch (m_reader.readNext()) {
    case QXmlStreamReader::StartElement:
        ++m_depth;
        break;
    case QXmlStreamReader::EndElement:
        --m_depth;
        break;
    case QXmlStreamReader::DTD:
    case QXmlStreamReader::Invalid:
        throw SimpleException(kCannotRead);
    default:
        break;
    }
}

} // namespace quenvolta
