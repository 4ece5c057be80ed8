// The schema of one installation: namespaces, their classes, and the instances that the MOF itself declares.
#pragma once

#include "host/ClassDef.h"
#include "host/Memo.h"
#include "wbem/MofReader.h"
#include "wbem/Text.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orl
{

// The namespace of declarations that name none, and of connections that name none.
inline constexpr std::wstring_view kDefaultNamespace = L"root\\KESTA";

struct Registration;

// Immutable once its repository is loaded.
class Namespace
{
public:
    // The name as declared, from the root down: root\KESTA.
    explicit Namespace(std::wstring name) : m_name(std::move(name)) {}
    Namespace(const Namespace&) = delete;
    Namespace& operator=(const Namespace&) = delete;

    const std::wstring& Name() const noexcept { return m_name; }

    // Without case; null when there is none.
    const ClassDef* FindClass(std::wstring_view name) const noexcept;
    // In the order of their declaration, superclasses first; the built-in system classes before all others.
    const std::vector<std::unique_ptr<ClassDef>>& Classes() const noexcept { return m_classes; }
    // The class itself and every class below it, superclasses first.
    std::vector<const ClassDef*> WithSubclasses(const ClassDef& top) const;

    // Instances of exactly this class that the MOF declares.
    const std::vector<Ref<ObjectBody>>& DeclaredInstances(const ClassDef& ofClass) const noexcept;

    // The flavors that a qualifier's declaration gives it (wbem::MofFlavor); 0 when it is not declared.
    std::uint16_t DeclaredFlavors(std::wstring_view qualifier) const noexcept;

    // The registrations of the classes' providers; see FindRegistration.
    Memo<const ClassDef*, Registration>& Registrations() const noexcept { return m_registrations; }

private:
    friend class RepositoryBuilder;

    const ClassDef& Add(std::unique_ptr<ClassDef> added);

    std::wstring m_name;
    std::vector<std::unique_ptr<ClassDef>> m_classes;
    wbem::NameMap<const ClassDef*> m_byName;
    std::map<const ClassDef*, std::vector<Ref<ObjectBody>>> m_instances;
    wbem::NameMap<std::uint16_t> m_qualifierFlavors;
    mutable Memo<const ClassDef*, Registration> m_registrations;
};

// Why a schema could not be loaded; text for people, with file, line and column where there are some.
class RepositoryError : public std::exception
{
public:
    explicit RepositoryError(std::wstring why) : text(std::move(why)) {}
    const char* what() const noexcept override { return "the schema cannot be loaded"; }

    std::wstring text;
};

// Immutable once loaded. It outlives every object that shows one of its classes or instances.
class Repository
{
public:
    // Every *.mof of the folder in the order of their names. Throws RepositoryError.
    static std::unique_ptr<const Repository> FromFolder(const std::filesystem::path& folder);
    // MOF in memory; `name` stands for the file in messages. Throws RepositoryError.
    static std::unique_ptr<const Repository> FromText(std::wstring_view mof, std::wstring_view name = L"text");

    // A path of names in any case with slashes of either kind; null when no such namespace was declared.
    const Namespace* FindNamespace(const std::vector<std::wstring>& names) const;
    const std::vector<std::unique_ptr<Namespace>>& Namespaces() const noexcept { return m_namespaces; }

private:
    friend class RepositoryBuilder;

    std::vector<std::unique_ptr<Namespace>> m_namespaces;
};

} // namespace orl
