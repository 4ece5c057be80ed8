// The schema of one installation, once it is loaded.
#include "host/Repository.h"

#include "host/RepositoryBuilder.h"
#include "wbem/ObjectPath.h"

#include <algorithm>

namespace orl
{
namespace
{

bool HasMofExtension(const std::filesystem::path& file)
{
    return wbem::EqualNoCase(file.extension().wstring(), L".mof");
}

std::unique_ptr<const Repository> Build(wbem::MofResult read)
{
    if (!read)
        throw RepositoryError(read.Error().Text());
    return RepositoryBuilder(*std::move(read)).Build();
}

} // namespace

const ClassDef* Namespace::FindClass(std::wstring_view name) const noexcept
{
    const auto found = m_byName.find(name);
    return found == m_byName.end() ? nullptr : found->second;
}

std::vector<const ClassDef*> Namespace::WithSubclasses(const ClassDef& top) const
{
    std::vector<const ClassDef*> found;
    for (const auto& each : m_classes)
    {
        if (each->DerivesFrom(top))
            found.push_back(each.get());
    }
    return found;
}

const std::vector<Ref<ObjectBody>>& Namespace::DeclaredInstances(const ClassDef& ofClass) const noexcept
{
    static const std::vector<Ref<ObjectBody>> none;
    const auto found = m_instances.find(&ofClass);
    return found == m_instances.end() ? none : found->second;
}

std::uint16_t Namespace::DeclaredFlavors(std::wstring_view qualifier) const noexcept
{
    const auto found = m_qualifierFlavors.find(qualifier);
    return found == m_qualifierFlavors.end() ? std::uint16_t{0} : found->second;
}

const ClassDef& Namespace::Add(std::unique_ptr<ClassDef> added)
{
    const ClassDef& made = *added;
    m_byName.emplace(made.Name(), &made);
    m_classes.push_back(std::move(added));
    return made;
}

const Namespace* Repository::FindNamespace(const std::vector<std::wstring>& names) const
{
    wbem::ObjectPath path;
    path.namespaces = names;
    const std::wstring wanted = path.NamespaceText();
    for (const auto& each : m_namespaces)
    {
        if (wbem::EqualNoCase(each->Name(), wanted))
            return each.get();
    }
    return nullptr;
}

std::unique_ptr<const Repository> Repository::FromFolder(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> files;
    try
    {
        for (const std::filesystem::directory_entry& entry : std::filesystem::directory_iterator(folder))
        {
            if (HasMofExtension(entry.path()))
                files.push_back(entry.path());
        }
        std::sort(files.begin(), files.end(),
                  [](const auto& left, const auto& right)
                  { return wbem::LessNoCase(left.filename().wstring(), right.filename().wstring()); });
    }
    catch (const std::filesystem::filesystem_error& error)
    {
        throw RepositoryError(L"the schema folder " + folder.wstring() + L" cannot be read: error " +
                              std::to_wstring(error.code().value()));
    }
    if (files.empty())
        throw RepositoryError(L"the schema folder " + folder.wstring() + L" has no *.mof file");
    return Build(wbem::ReadMofFiles(files));
}

std::unique_ptr<const Repository> Repository::FromText(std::wstring_view mof, std::wstring_view name)
{
    return Build(wbem::ReadMofText(mof, name));
}

} // namespace orl
