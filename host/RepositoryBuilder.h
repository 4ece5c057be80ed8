// From MOF declarations to a repository.
#pragma once

#include "host/Repository.h"
#include "wbem/Mof.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace orl
{

// One use: give it the document, take the repository. Throws RepositoryError at the first contradiction.
class RepositoryBuilder
{
public:
    explicit RepositoryBuilder(wbem::MofDocument document) : m_document(std::move(document)) {}

    std::unique_ptr<const Repository> Build();

private:
    struct PendingClass
    {
        wbem::MofClass* declaration = nullptr;
        bool isUnderWay = false; // its superclasses are being made: meeting it again is a circle
    };
    struct Scope // a namespace on its way
    {
        Namespace* nameSpace = nullptr;
        wbem::NameMap<PendingClass> pending;
    };
    struct PendingInstance
    {
        Ref<ObjectBody> body;
        const wbem::MofInstance* declaration = nullptr;
        bool isResolved = false;
        bool isUnderWay = false; // its aliases are being resolved: meeting it again is a circle
    };

    Scope& ScopeOf(const std::wstring& nameSpace, const wbem::MofPosition& position);
    Scope& ScopeOf(const std::vector<std::wstring>& names);
    void AddSystemClasses(Namespace& nameSpace) const;
    void Collect();
    void CollectNamespace(const wbem::MofInstance& declaration);
    void CollectClass(wbem::MofClass& declaration);
    void MakeClasses();
    void MakeClass(Scope& scope, PendingClass& pending);
    void MakeInstance(const wbem::MofInstance& declaration);
    wbem::CimValue Typed(const Namespace& nameSpace, const PropertyDef& property, const wbem::CimValue& value,
                         const wbem::MofPosition& position) const;
    wbem::CimValue TypedObject(const Namespace& nameSpace, const wbem::CimObject& object,
                               const wbem::MofPosition& position) const;
    void ResolveAliases(PendingInstance& instance);
    wbem::CimValue Resolved(const wbem::CimValue& value, const wbem::MofPosition& position);
    [[noreturn]] void Refuse(const wbem::MofPosition& position, const std::wstring& reason) const;

    wbem::MofDocument m_document;
    std::unique_ptr<Repository> m_repository;
    std::vector<std::unique_ptr<Scope>> m_scopes;
    std::vector<PendingInstance> m_instances;
    // Where the declarations went that an alias can name.
    std::unordered_map<const wbem::MofInstance*, std::size_t> m_byDeclaration; // to m_instances
    std::unordered_map<const wbem::MofClass*, std::wstring> m_names;
};

} // namespace orl
