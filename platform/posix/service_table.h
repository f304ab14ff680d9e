#pragma once

#include "platform/posix/descriptor.h"
#include "platform/service_manager.h"

namespace rvl::platform {

/// The services as the registry has them, below HKLM\SYSTEM\CurrentControlSet\Services with the value names
/// of Windows. Failures raise an Error with the Win32 code.

/// Keeps other processes from changing the table for as long as it lives. Whoever may not manage services
/// gets an Error with number 5; 1055 when another process keeps it for too long.
class ServiceTableLock {
 public:
    ServiceTableLock();

    /// The right alone, without waiting for others.
    static void DemandAccess();

 private:
    Descriptor m_file;
};

struct ServiceEntry {
    enum class Kind { Missing, Present, Marked };  ///< marked for deletion, its service still runs
    Kind kind = Kind::Missing;
    Text commandLine;
};

/// The entry of a service; what was marked for deletion goes here once its service has ended.
ServiceEntry ReadServiceEntry(const Text& name);  ///< for somebody who only looks
ServiceEntry ReadServiceEntry(const ServiceTableLock&,
                              const Text& name);  ///< for somebody who holds the table

/// The other half of a crash in between is a missing entry.
void WriteServiceEntry(const ServiceTableLock&, const ServiceDescription& description);

void MarkServiceEntry(const ServiceTableLock&, const Text& name);

}  // namespace rvl::platform
