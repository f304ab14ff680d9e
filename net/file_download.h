#pragma once

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "runtime/file.h"

namespace rvl {

/// One file that the deployment server pushes: FILE_BEGIN opens it, FILE_DATA fills it, every answer goes out
/// through the reply function. An interrupted transfer resumes at the length already on disk.
class FileDownload {
 public:
    using Reply = std::function<void(const Text& command, const std::vector<Text>& params)>;
    enum class Outcome { Continues, Complete, Failed };

    FileDownload(Text context, Reply reply) : m_context(std::move(context)), m_reply(std::move(reply)) {}

    const Text& Context() const { return m_context; }

    /// Handles one message of the transfer. After Complete or Failed the transfer is to be dropped.
    Outcome IncomingMessage(const Text& command, TextView params);

 private:
    Outcome Begin(TextView params);
    void OpenOutput();
    void OpenNew();
    void OpenExisting(std::int64_t length);
    Outcome Write(TextView content);
    Outcome Complete();
    Outcome Fail(const Text& reason);

    Text m_context;
    Reply m_reply;
    Text m_path;
    std::int64_t m_size = 0;
    std::int64_t m_position = 0;
    bool m_resumeAllowed = false;
    File m_file;
};

}  // namespace rvl
