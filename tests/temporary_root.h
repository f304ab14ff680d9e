#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace rvl::test {

/// A workstation root of its own for the test program, set before anything uses one and removed at the end.
/// A child that the test program starts of itself keeps the root it is given.
class TemporaryRoot {
 public:
    TemporaryRoot() {
        if (std::getenv("RVL_TEST_CHILD") != nullptr) return;
        std::string name = (std::filesystem::temp_directory_path() / "rvl-test-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) std::abort();
        m_folder = name;
        setenv("RVL_ROOT", m_folder.c_str(), 1);
    }

    ~TemporaryRoot() {
        std::error_code ignored;
        if (!m_folder.empty()) std::filesystem::remove_all(m_folder, ignored);
    }

    TemporaryRoot(const TemporaryRoot&) = delete;
    TemporaryRoot& operator=(const TemporaryRoot&) = delete;

    const std::filesystem::path& Folder() const { return m_folder; }

 private:
    std::filesystem::path m_folder;
};

inline const TemporaryRoot g_temporaryRoot;

}  // namespace rvl::test
