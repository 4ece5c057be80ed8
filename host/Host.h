// One service: its schema, its providers and its threads.
#pragma once

#include "host/ProviderHost.h"
#include "host/Repository.h"
#include "host/WorkerPool.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

namespace orl
{

// Outlives all objects that come from it. Thread safe.
class Host
{
public:
    // Makes the schema. Throws RepositoryError.
    using SchemaSource = std::function<std::unique_ptr<const Repository>()>;

    Host(SchemaSource schema, ProviderLoader loader);
    // Waits for all calls to end.
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    // The service of this process: schema and providers as the registry names them. Never destroyed, since a thread of
    // a provider that hangs may still be in it while the process ends.
    static Host& OfProcess();

    // Loaded at the first call; after a failure the next call tries again. Throws RepositoryError.
    const Repository& Schema();
    WorkerPool& Workers() noexcept { return m_workers; }
    ProviderHost& Providers() noexcept { return m_providers; }

    // Connections of clients, as opposed to those that providers hold.
    void AddClient() noexcept { ++m_clients; }
    void RemoveClient() noexcept { --m_clients; }
    // Without clients and calls under way: releases the providers and ends the threads.
    void ReleaseUnused();

private:
    const SchemaSource m_schemaSource;
    std::mutex m_mutex;
    std::unique_ptr<const Repository> m_schema;
    std::atomic<unsigned> m_clients{0};
    ProviderHost m_providers;
    WorkerPool m_workers;
};

} // namespace orl
