// From MOF declarations to a repository: classes superclasses first, then instances, then the aliases between them.
#include "host/RepositoryBuilder.h"

#include "host/ObjectNames.h"
#include "host/SystemClasses.h"
#include "wbem/ObjectPath.h"

#include <algorithm>

namespace orl
{

using wbem::CimType;
using wbem::CimValue;

std::unique_ptr<const Repository> RepositoryBuilder::Build()
{
    m_repository = std::make_unique<Repository>();
    try
    {
        ScopeOf(std::wstring(kDefaultNamespace), {});
        Collect();
        MakeClasses();
        for (const wbem::MofDeclaration& declaration : m_document.declarations)
        {
            if (const auto* instance = std::get_if<wbem::MofInstance>(&declaration))
                MakeInstance(*instance);
        }
        for (PendingInstance& instance : m_instances)
            ResolveAliases(instance);
    }
    catch (const SchemaError& error)
    {
        Refuse(error.position, error.reason);
    }
    return std::move(m_repository);
}

void RepositoryBuilder::Refuse(const wbem::MofPosition& position, const std::wstring& reason) const
{
    throw RepositoryError(
        wbem::MofError{m_document.files[position.file].name, position.line, position.column, reason}.Text());
}

// Namespaces --------------------------------------------------------------------------------------------------------

RepositoryBuilder::Scope& RepositoryBuilder::ScopeOf(const std::wstring& nameSpace, const wbem::MofPosition& position)
{
    const auto path = wbem::ObjectPath::ParseNamespace(nameSpace.empty() ? kDefaultNamespace : nameSpace);
    if (!path)
        Refuse(position, L"the namespace " + nameSpace + L" is not one: " + path.Error().Text());
    return ScopeOf(path->namespaces);
}

RepositoryBuilder::Scope& RepositoryBuilder::ScopeOf(const std::vector<std::wstring>& names)
{
    if (names.empty())
        return ScopeOf(std::wstring(kDefaultNamespace), {});
    if (const Namespace* known = m_repository->FindNamespace(names))
    {
        return **std::find_if(m_scopes.begin(), m_scopes.end(),
                              [&](const auto& scope) { return scope->nameSpace == known; });
    }
    if (names.size() > 1) // a namespace is in one that exists
        ScopeOf({names.begin(), names.end() - 1});
    wbem::ObjectPath path;
    path.namespaces = names;
    m_repository->m_namespaces.push_back(std::make_unique<Namespace>(path.NamespaceText()));
    m_scopes.push_back(std::make_unique<Scope>());
    m_scopes.back()->nameSpace = m_repository->m_namespaces.back().get();
    AddSystemClasses(*m_scopes.back()->nameSpace);
    return *m_scopes.back();
}

void RepositoryBuilder::AddSystemClasses(Namespace& nameSpace) const
{
    for (const wbem::MofClass& declaration : SystemClasses())
    {
        const ClassDef* superclass = nameSpace.FindClass(declaration.superclass);
        nameSpace.Add(std::make_unique<ClassDef>(declaration, superclass, nameSpace));
    }
}

// Declarations ------------------------------------------------------------------------------------------------------

void RepositoryBuilder::Collect()
{
    for (wbem::MofDeclaration& declaration : m_document.declarations)
    {
        if (auto* aClass = std::get_if<wbem::MofClass>(&declaration))
            CollectClass(*aClass);
        else if (auto* instance = std::get_if<wbem::MofInstance>(&declaration))
            CollectNamespace(*instance);
        else if (auto* qualifier = std::get_if<wbem::MofQualifierDeclaration>(&declaration))
            ScopeOf(qualifier->nameSpace, qualifier->position)
                .nameSpace->m_qualifierFlavors.insert_or_assign(qualifier->name, qualifier->flavors);
    }
}

// An instance of __NAMESPACE makes the namespace that it names; it stays an instance of the one around it.
void RepositoryBuilder::CollectNamespace(const wbem::MofInstance& declaration)
{
    Scope& around = ScopeOf(declaration.nameSpace, declaration.position);
    if (!wbem::EqualNoCase(declaration.className, L"__NAMESPACE"))
        return;
    for (const wbem::MofInstance::Property& property : declaration.properties)
    {
        if (!wbem::EqualNoCase(property.name, L"Name") || !wbem::IsText(property.value.Type()))
            continue;
        const std::wstring name = around.nameSpace->Name() + L"\\" + std::wstring(property.value.AsText());
        ScopeOf(name, property.position);
    }
}

void RepositoryBuilder::CollectClass(wbem::MofClass& declaration)
{
    Scope& scope = ScopeOf(declaration.nameSpace, declaration.position);
    if (scope.nameSpace->FindClass(declaration.name))
        Refuse(declaration.position, L"the class " + declaration.name + L" is one of the system's own");
    const auto [place, isNew] = scope.pending.try_emplace(declaration.name, PendingClass{&declaration});
    if (isNew)
        return;
    const wbem::MofPosition& first = place->second.declaration->position;
    Refuse(declaration.position, L"the class " + declaration.name + L" is declared already, in " +
                                     m_document.files[first.file].name + L" line " + std::to_wstring(first.line));
}

// Classes -----------------------------------------------------------------------------------------------------------

void RepositoryBuilder::MakeClasses()
{
    for (wbem::MofDeclaration& declaration : m_document.declarations)
    {
        auto* aClass = std::get_if<wbem::MofClass>(&declaration);
        if (!aClass || aClass->name.empty()) // made already, below another one: its declaration has moved there
            continue;
        Scope& scope = ScopeOf(aClass->nameSpace, aClass->position);
        MakeClass(scope, scope.pending.find(aClass->name)->second);
    }
}

// Climbs to the first superclass that exists and makes the classes on the way down; no recursion, as deep as it may be.
void RepositoryBuilder::MakeClass(Scope& scope, PendingClass& pending)
{
    std::vector<PendingClass*> chain;
    const ClassDef* superclass = nullptr;
    for (PendingClass* step = &pending; step;)
    {
        const wbem::MofClass& declaration = *step->declaration;
        if (step->isUnderWay)
            Refuse(declaration.position, L"the class " + declaration.name + L" is its own superclass");
        step->isUnderWay = true;
        chain.push_back(step);
        if (declaration.superclass.empty())
            break;
        superclass = scope.nameSpace->FindClass(declaration.superclass);
        if (superclass)
            break;
        const auto found = scope.pending.find(declaration.superclass);
        if (found == scope.pending.end())
            Refuse(declaration.position, L"the superclass " + declaration.superclass + L" of " + declaration.name +
                                             L" does not exist in " + scope.nameSpace->Name());
        step = &found->second;
    }
    for (auto step = chain.rbegin(); step != chain.rend(); ++step)
    {
        superclass = &scope.nameSpace->Add(
            std::make_unique<ClassDef>(std::move(*(*step)->declaration), superclass, *scope.nameSpace));
        if (!superclass->Declaration().alias.empty())
            m_names.emplace((*step)->declaration, superclass->Name());
        (*step)->declaration->name.clear();
        (*step)->isUnderWay = false;
    }
}

// Instances ---------------------------------------------------------------------------------------------------------

void RepositoryBuilder::MakeInstance(const wbem::MofInstance& declaration)
{
    Namespace& nameSpace = *ScopeOf(declaration.nameSpace, declaration.position).nameSpace;
    const ClassDef* ofClass = nameSpace.FindClass(declaration.className);
    if (!ofClass)
        Refuse(declaration.position,
               L"the class " + declaration.className + L" of this instance does not exist in " + nameSpace.Name());
    Ref<ObjectBody> body = ofClass->Prototype()->Copy(ObjectBody::Genus::Instance);
    for (const wbem::MofInstance::Property& given : declaration.properties)
    {
        const std::size_t index = ofClass->FindProperty(given.name);
        if (index == ClassDef::kNotFound)
            Refuse(given.position, L"the class " + ofClass->Name() + L" has no property " + given.name);
        (*body)[index] = Typed(nameSpace, ofClass->Properties()[index], given.value, given.position);
    }
    m_byDeclaration.emplace(&declaration, m_instances.size());
    m_instances.push_back({body, &declaration});
    nameSpace.m_instances[ofClass].push_back(std::move(body));
}

CimValue RepositoryBuilder::Typed(const Namespace& nameSpace, const PropertyDef& property, const CimValue& value,
                                  const wbem::MofPosition& position) const
{
    std::wstring reason;
    const std::optional<CimValue> typed = wbem::ConvertTo(value, property.Type(), property.IsArray(), reason);
    if (!typed)
        Refuse(position, L"the property " + property.Name() + L" is " + property.CimTypeText() + L": " + reason);
    if (property.Type() != CimType::Object || typed->IsNull())
        return *typed;
    if (!typed->IsArray())
        return TypedObject(nameSpace, *typed->AsObject(), position);
    std::vector<CimValue> elements;
    for (const CimValue& element : typed->Elements())
        elements.push_back(element.IsNull() ? element : TypedObject(nameSpace, *element.AsObject(), position));
    return CimValue::Array(CimType::Object, std::move(elements));
}

CimValue RepositoryBuilder::TypedObject(const Namespace& nameSpace, const wbem::CimObject& object,
                                        const wbem::MofPosition& position) const
{
    const ClassDef* ofClass = nameSpace.FindClass(object.className);
    if (!ofClass)
        Refuse(position, L"the class " + object.className + L" of this instance does not exist in " + nameSpace.Name());
    wbem::CimObject typed;
    typed.className = ofClass->Name();
    for (const wbem::CimObject::Property& given : object.properties)
    {
        const std::size_t index = ofClass->FindProperty(given.name);
        if (index == ClassDef::kNotFound)
            Refuse(position, L"the class " + ofClass->Name() + L" has no property " + given.name);
        const PropertyDef& property = ofClass->Properties()[index];
        typed.properties.push_back({property.Name(), Typed(nameSpace, property, given.value, position)});
    }
    return CimValue::Object(std::move(typed));
}

// Aliases -----------------------------------------------------------------------------------------------------------

void RepositoryBuilder::ResolveAliases(PendingInstance& instance)
{
    if (instance.isResolved)
        return;
    if (instance.isUnderWay)
        Refuse(instance.declaration->position, L"the keys of this instance refer to themselves");
    instance.isUnderWay = true;
    for (std::size_t i = 0; i < instance.body->Count(); ++i)
    {
        CimValue& slot = (*instance.body)[i];
        if (slot.Type() == CimType::Reference && !slot.IsNull())
            slot = Resolved(slot, instance.declaration->position);
    }
    instance.isResolved = true;
    instance.isUnderWay = false;
}

CimValue RepositoryBuilder::Resolved(const CimValue& value, const wbem::MofPosition& position)
{
    if (value.IsArray())
    {
        std::vector<CimValue> elements;
        for (const CimValue& element : value.Elements())
            elements.push_back(Resolved(element, position));
        return CimValue::Array(CimType::Reference, std::move(elements));
    }
    if (!value.AsText().starts_with(L'$'))
        return value;
    const std::wstring alias(value.AsText());
    const wbem::MofDeclaration* declaration = m_document.FindAlias(alias, position);
    if (const auto* aClass = declaration ? std::get_if<wbem::MofClass>(declaration) : nullptr)
        return CimValue::Reference(m_names.at(aClass));
    const auto* instance = declaration ? std::get_if<wbem::MofInstance>(declaration) : nullptr;
    if (!instance)
        Refuse(position, L"the alias " + alias + L" names no class or instance");
    PendingInstance& target = m_instances[m_byDeclaration.at(instance)];
    ResolveAliases(target);
    const std::optional<std::wstring> path = RelativePath(*target.body);
    if (!path)
        Refuse(position, L"the instance " + alias + L" has no path: a key is missing");
    return CimValue::Reference(*path);
}

} // namespace orl
