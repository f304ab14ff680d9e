#include "platform/posix/service_table.h"

#include <fcntl.h>
#include <sys/file.h>

#include <chrono>
#include <string>
#include <thread>

#include "platform/error.h"
#include "platform/posix/service_lock.h"
#include "platform/posix/workstation_root.h"
#include "platform/registry.h"
#include "platform/system_message.h"

namespace rvl::platform {
namespace {

using Kind = ServiceEntry::Kind;
constexpr RegistryRoot kRoot = RegistryRoot::LocalMachine;

constexpr std::chrono::seconds kPatience{15};  // longer than a start may take
constexpr std::chrono::milliseconds kNap{20};

Text KeyOf(const Text& name) {
    return "SYSTEM\\CurrentControlSet\\Services\\" + name;
}

[[noreturn]] void Raise(int code) {
    throw Error(code, "ServiceManager", SystemMessage(code));
}

Descriptor OpenLockFile() {
    constexpr int kAccessDenied = 5;
    const std::string path = WorkstationRoot() + "/service_manager.lock";
    Descriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!file.IsOpen()) Raise(kAccessDenied);
    return file;
}

Text TextOf(const std::optional<RegistryValue>& value) {
    const Text* text = value ? std::get_if<Text>(&*value) : nullptr;
    return text != nullptr ? *text : Text();
}

ServiceEntry StoredEntry(const Text& name) {
    Text commandLine = TextOf(ReadRegistry(kRoot, KeyOf(name), "ImagePath"));
    if (commandLine.empty()) return {};
    const bool marked = ReadRegistry(kRoot, KeyOf(name), "DeleteFlag") == RegistryValue(1u);
    return {marked ? Kind::Marked : Kind::Present, std::move(commandLine)};
}

bool IsOver(const ServiceEntry& entry) {
    return entry.kind == Kind::Marked && FindServiceHolder().state == ServiceState::Stopped;
}

}  // namespace

ServiceTableLock::ServiceTableLock() : m_file(OpenLockFile()) {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (::flock(m_file.Get(), LOCK_EX | LOCK_NB) != 0) {
        if (std::chrono::steady_clock::now() > deadline) Raise(kServiceTableLocked);
        std::this_thread::sleep_for(kNap);
    }
}

void ServiceTableLock::DemandAccess() {
    OpenLockFile();
}

ServiceEntry ReadServiceEntry(const Text& name) {
    ServiceEntry entry = StoredEntry(name);
    if (!IsOver(entry)) return entry;
    try {
        return ReadServiceEntry(ServiceTableLock(), name);
    } catch (const Error&) {  // somebody else will remove it
        return {};
    }
}

ServiceEntry ReadServiceEntry(const ServiceTableLock&, const Text& name) {
    ServiceEntry entry = StoredEntry(name);
    if (!IsOver(entry)) return entry;
    DeleteRegistryKey(kRoot, KeyOf(name));
    return {};
}

/// The account's password is not kept, and there are no services here that another could depend on.
void WriteServiceEntry(const ServiceTableLock&, const ServiceDescription& description) {
    constexpr std::uint32_t kOwnProcess = 16, kInteractive = 256, kAutomatic = 2, kOnDemand = 3, kNormal = 1;
    const Text key = KeyOf(description.name);
    DeleteRegistryKey(kRoot, key);
    WriteRegistry(kRoot, key, "DisplayName", description.displayName);
    WriteRegistry(kRoot, key, "ObjectName", description.account);
    WriteRegistry(kRoot, key, "Type", kOwnProcess + (description.interactive ? kInteractive : 0));
    WriteRegistry(kRoot, key, "Start", description.automaticStart ? kAutomatic : kOnDemand);
    WriteRegistry(kRoot, key, "ErrorControl", kNormal);
    WriteRegistry(kRoot, key, "ImagePath", description.commandLine);  // last: it makes the entry one
}

void MarkServiceEntry(const ServiceTableLock&, const Text& name) {
    WriteRegistry(kRoot, KeyOf(name), "DeleteFlag", 1u);
}

}  // namespace rvl::platform
