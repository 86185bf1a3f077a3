#include "platform/wbem/class_table.h"

#include <iterator>
#include <utility>

namespace quenvolta
{

namespace
{

enum class RowKind { Namespace, Class, Singleton, Key, Property, StaticMethod, InstanceMethod, In, Out };

struct Row {
    RowKind kind;
    QStringView name;
    CimType type;
    TableVersion since;
};

// clang-format off
#define V(major, minor) TableVersion{major, minor}
#define NAMESPACE(name) {RowKind::Namespace, u"" #name, CimType::String, {}},
#define CLASS(name, since) {RowKind::Class, u"" #name, CimType::String, since},
#define SINGLETON(name, since) {RowKind::Singleton, u"" #name, CimType::String, since},
#define KEY(name) {RowKind::Key, u"" #name, CimType::String, {}},
#define PROPERTY(type, name, since) {RowKind::Property, u"" #name, CimType::type, since},
#define METHOD(name, how, since) {RowKind::how##Method, u"" #name, CimType::String, since},
#define IN(type, name, since) {RowKind::In, u"" #name, CimType::type, since},
#define OUT(type, name, since) {RowKind::Out, u"" #name, CimType::type, since},
constexpr Row kRows[] = {
#include "platform/wbem/class_table.def"
};
#undef V
#undef NAMESPACE
#undef CLASS
#undef SINGLETON
#undef KEY
#undef PROPERTY
#undef METHOD
#undef IN
#undef OUT
// clang-format on

ClassDefinitionPtr ReadSignature(const Row*& row, RowKind direction, TableVersion version, const Row* end)
{
    auto signature = std::make_shared<ClassDefinition>();
    signature->name = kParametersClass.toString();
    for (; row != end && row->kind == direction; ++row) {
        if (row->since <= version)
            signature->properties.append({row->name.toString(), row->type, false});
    }
    return signature->properties.isEmpty() ? nullptr : ClassDefinitionPtr(std::move(signature));
}

// Reads the class at `row` and leaves `row` behind its last member.
std::shared_ptr<ClassDefinition> ReadClass(const Row*& row, TableVersion version, const Row* end)
{
    auto definition = std::make_shared<ClassDefinition>();
    definition->name = row->name.toString();
    definition->singleton = row->kind == RowKind::Singleton;
    for (++row; row != end;) {
        if (row->kind == RowKind::Key || row->kind == RowKind::Property) {
            if (row->since <= version)
                definition->properties.append({row->name.toString(), row->type, row->kind == RowKind::Key});
            ++row;
        } else if (row->kind == RowKind::StaticMethod || row->kind == RowKind::InstanceMethod) {
            const Row& head = *row++;
            MethodDefinition method;
            method.name = head.name.toString();
            method.isStatic = head.kind == RowKind::StaticMethod;
            method.in = ReadSignature(row, RowKind::In, version, end);
            method.out = ReadSignature(row, RowKind::Out, version, end);
            if (head.since <= version)
                definition->methods.append(std::move(method));
        } else {
            break;
        }
    }
    return definition;
}

} // namespace

ClassTable::ClassTable(const QString& namespaceName, TableVersion version)
{
    const Row* const end = std::end(kRows);
    bool wanted = false;
    for (const Row* row = std::begin(kRows); row != end;) {
        if (row->kind == RowKind::Namespace) {
            wanted = namespaceName.compare(row->name, Qt::CaseInsensitive) == 0;
            ++row;
            continue;
        }
        const TableVersion since = row->since;
        const std::shared_ptr<ClassDefinition> definition = ReadClass(row, version, end);
        if (wanted && since <= version) {
            m_names.append(definition->name);
            m_classes.insert(definition->name.toLower(), definition);
        }
    }
}

ClassDefinitionPtr ClassTable::Find(const QString& className) const
{
    return m_classes.value(className.toLower());
}

} // namespace quenvolta
