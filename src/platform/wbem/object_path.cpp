#include "platform/wbem/object_path.h"

#include "platform/wbem/wbem_object.h"

#include <QStringView>

#include <algorithm>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

bool IsNameCharacter(QChar c)
{
    return c == u'_' || (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

// Takes what a path is made of off the front of a text.
class PathReader
{
public:
    explicit PathReader(QStringView text)
        : m_rest(text)
    {
    }

    bool AtEnd() const { return m_rest.isEmpty(); }

    bool Take(QChar expected)
    {
        if (m_rest.isEmpty() || m_rest.front() != expected)
            return false;
        m_rest = m_rest.sliced(1);
        return true;
    }

    QString TakeName()
    {
        qsizetype length = 0;
        while (length < m_rest.size() && IsNameCharacter(m_rest[length]))
            ++length;
        QString name = m_rest.first(length).toString();
        m_rest = m_rest.sliced(length);
        return name;
    }

    std::optional<QString> TakeQuoted()
    {
        if (!Take(u'"'))
            return std::nullopt;
        QString value;
        while (!m_rest.isEmpty()) {
            if (Take(u'"'))
                return value;
            if (Take(u'\\') && m_rest.isEmpty())
                break;
            value.append(m_rest.front());
            m_rest = m_rest.sliced(1);
        }
        return std::nullopt;
    }

private:
    QStringView m_rest;
};

class WbemPath final : public IWbemPath
{
public:
    HRESULT SetClassName(const QString& name) override
    {
        if (name.isEmpty() || !std::all_of(name.cbegin(), name.cend(), IsNameCharacter))
            return WBEM_E_INVALID_PARAMETER;
        m_className = name;
        return S_OK;
    }

    HRESULT GetClassName(QString* name) const override
    {
        *name = m_className;
        return S_OK;
    }

    HRESULT SetKey(const QString& name, int flags, CimType type, const QString& value) override
    {
        if (flags != 0 || type != CimType::String || name.isEmpty() ||
            !std::all_of(name.cbegin(), name.cend(), IsNameCharacter))
            return WBEM_E_INVALID_PARAMETER;
        const auto same = std::find_if(m_keys.begin(), m_keys.end(), [&](const PathKey& key) {
            return key.name.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (same == m_keys.end())
            m_keys.append({name, value});
        else
            same->value = value;
        m_singleton = false;
        return S_OK;
    }

    HRESULT GetKeys(QList<PathKey>* keys) const override
    {
        *keys = m_keys;
        return S_OK;
    }

    HRESULT SetSingleton() override
    {
        m_keys.clear();
        m_singleton = true;
        return S_OK;
    }

    bool IsSingleton() const override { return m_singleton; }

    HRESULT GetText(int flags, std::uint32_t* length, char16_t* buffer) const override
    {
        if (flags != 0)
            return WBEM_E_INVALID_PARAMETER;
        const QString text = Text();
        const auto needed = static_cast<std::uint32_t>(text.size()) + 1;
        const std::uint32_t offered = buffer ? *length : 0;
        *length = needed;
        if (offered < needed)
            return WBEM_E_BUFFER_TOO_SMALL;
        std::copy_n(text.utf16(), needed, buffer);
        return S_OK;
    }

    HRESULT SetText(const QString& text) override
    {
        PathReader reader(text);
        WbemPath read;
        if (Failed(read.SetClassName(reader.TakeName())))
            return WBEM_E_INVALID_OBJECT_PATH;
        if (reader.Take(u'=')) {
            if (!reader.Take(u'@') || !reader.AtEnd())
                return WBEM_E_INVALID_OBJECT_PATH;
            read.m_singleton = true;
        } else if (reader.Take(u'.')) {
            do {
                const QString name = reader.TakeName();
                const bool known = std::any_of(read.m_keys.cbegin(), read.m_keys.cend(), [&](const PathKey& key) {
                    return key.name.compare(name, Qt::CaseInsensitive) == 0;
                });
                const bool assigned = reader.Take(u'=');
                const std::optional<QString> value = reader.TakeQuoted();
                if (known || !assigned || !value || Failed(read.SetKey(name, 0, CimType::String, *value)))
                    return WBEM_E_INVALID_OBJECT_PATH;
            } while (reader.Take(u','));
        }
        if (!reader.AtEnd())
            return WBEM_E_INVALID_OBJECT_PATH;
        *this = read;
        return S_OK;
    }

private:
    QString Text() const
    {
        if (m_singleton)
            return m_className + "=@"_L1;
        QString text = m_className;
        QChar separator = u'.';
        for (const PathKey& key : m_keys) {
            QString value = key.value;
            value.replace(u'\\', "\\\\"_L1).replace(u'"', "\\\""_L1);
            text += separator + key.name + "=\""_L1 + value + u'"';
            separator = u',';
        }
        return text;
    }

    QString m_className;
    QList<PathKey> m_keys;
    bool m_singleton = false;
};

} // namespace

std::shared_ptr<IWbemPath> CreateWbemPath()
{
    return std::make_shared<WbemPath>();
}

QString RelativePathOf(const WbemObject& object)
{
    const ClassDefinition& definition = *object.Definition();
    const auto path = CreateWbemPath();
    if (Failed(path->SetClassName(definition.name)))
        return {};
    if (definition.singleton) {
        path->SetSingleton();
    } else {
        bool any = false;
        for (qsizetype i = 0; i < definition.properties.size(); ++i) {
            if (!definition.properties[i].key)
                continue;
            const QString* value = std::get_if<QString>(&object.Values()[i]);
            if (!value || Failed(path->SetKey(definition.properties[i].name, 0, CimType::String, *value)))
                return {};
            any = true;
        }
        if (!any)
            return {};
    }
    std::uint32_t length = 0;
    path->GetText(0, &length, nullptr);
    QString text(static_cast<qsizetype>(length), Qt::Uninitialized);
    path->GetText(0, &length, reinterpret_cast<char16_t*>(text.data()));
    text.chop(1);
    return text;
}

} // namespace quenvolta
