#pragma once

#include "platform/text.h"

namespace rvl {

/// The window of a service that is debugged (frmClientService).
class ServiceView {
 public:
    virtual ~ServiceView() = default;
    virtual void SetStatus(const Text& status) = 0;
    virtual void SetDiscoveryMethod(const Text& method) = 0;
};

}  // namespace rvl
