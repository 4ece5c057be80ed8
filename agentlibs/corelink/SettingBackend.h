// SettingBackend: what stands behind the adapter agent and knows where adapters and their settings come from.
#pragma once

#include "agent/WarningMessageObj.h"
#include "agentlibs/BackendConfig.h"
#include "agentlibs/inventory/Operation.h"
#include "agentlibs/settings/SettingDescription.h"

#include <memory>
#include <vector>

namespace orl
{

// One adapter, for the time of one operation. Everything throws BackendError.
class SettingAdapter
{
public:
    virtual ~SettingAdapter() = default;

    virtual COrlString Name() const = 0;
    // As they stand now, in the order in which clients see them.
    virtual std::vector<SettingDescription> Settings() const = 0;

    // What speaks against a value within the setting's limits: throws SettingRefusal, or adds advice.
    virtual void Check(const SettingDescription& setting, LONG value, std::vector<WarningMessageObj>& advice) const = 0;
    // Returns when the setting has the value. `setting` is one of Settings().
    virtual void Write(const SettingDescription& setting, LONG value) = 0;

protected:
    SettingAdapter() = default;
    SettingAdapter(const SettingAdapter&) = delete;
    SettingAdapter& operator=(const SettingAdapter&) = delete;
};

// Any number of threads may be inside a back end at once.
class SettingBackend
{
public:
    virtual ~SettingBackend() = default;

    // Looks afresh. Throws nothing but std::bad_alloc.
    virtual BackendStatus Status() = 0;

    // The adapter of this id, whatever its case; every operation of the agent begins so. Throws BackendError when there
    // is none or nothing can be known of it.
    virtual std::unique_ptr<SettingAdapter> Open(Operation operation, const COrlString& adapterId) = 0;

protected:
    SettingBackend() = default;
    SettingBackend(const SettingBackend&) = delete;
    SettingBackend& operator=(const SettingBackend&) = delete;
};

// The factories never fail because of what they find, only for want of memory: what is wrong with the source shows in
// Status() and in each operation, so that it can be put right while the process runs.
std::unique_ptr<SettingBackend> MakeInventorySettings(const BackendConfig& config);
std::unique_ptr<SettingBackend> MakeSysfsSettings(const BackendConfig& config);

// A back end all of whose operations fail with this error.
std::unique_ptr<SettingBackend> MakeUnavailableSettings(std::wstring source, const BackendError& error);

// The back end that the configuration names; an unavailable one that says what is wrong when it names none.
std::unique_ptr<SettingBackend> MakeSettingBackend(const BackendConfig& config);

} // namespace orl
