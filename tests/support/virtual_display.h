#pragma once

namespace rvl::test {

/// A desktop for windows, for as long as it lives: on Linux an X server of its own, without a window manager,
/// which DISPLAY then names; on Windows the one on which the tests run.
class VirtualDisplay {
 public:
    VirtualDisplay();
    ~VirtualDisplay() { End(); }
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    void End();

 private:
    int m_server = 0;
};

}  // namespace rvl::test
