#include "tools/deployserver/published_folder.h"

#include <algorithm>
#include <filesystem>

#include "platform/error.h"
#include "runtime/file_digest.h"
#include "tools/deployserver/file_pieces.h"
#include "util/text_functions.h"

namespace rvl::deployserver {
namespace {

namespace fs = std::filesystem;

fs::path PathOf(const Text& text) {
    const std::string utf8 = Utf8FromText(text);
    return {std::u8string(utf8.begin(), utf8.end())};
}

std::string Utf8Of(const fs::path& path) {
    const std::u8string utf8 = path.generic_u8string();
    return {utf8.begin(), utf8.end()};
}

/// The name as it is, or with the bytes of its accents when it cannot be shown otherwise.
Text Shown(const std::string& utf8) {
    try {
        return TextFromUtf8(utf8);
    } catch (const Error&) {
        constexpr TextView kDigits = "0123456789abcdef";
        Text shown;
        for (const char character : utf8) {
            const auto code = static_cast<unsigned char>(character);
            shown += code < 0x80 ? Text(1, character) : Text("\\x") + kDigits[code >> 4] + kDigits[code & 15];
        }
        return shown;
    }
}

[[noreturn]] void Raise(const Text& description) {
    throw Error(kApplicationErrorBase + 1, "PublishedFolder", description);
}

class FolderReader {
 public:
    explicit FolderReader(const Text& folder) : m_folder(folder), m_path(PathOf(folder)) {}

    std::vector<PublishedFile> Read() {
        for (const auto& entry : fs::recursive_directory_iterator(m_path))
            Add(entry);
        std::sort(m_files.begin(), m_files.end(), [](const PublishedFile& a, const PublishedFile& b) {
            return CompareNoCase(a.name, b.name) < 0;
        });
        RefuseTwins();
        if (!m_problems.empty()) Raise("cannot publish \"" + m_folder + "\":" + m_problems);
        for (PublishedFile& file : m_files)
            file.digest = MD5SumOfFile(file.localPath);
        return std::move(m_files);
    }

 private:
    void Refuse(const Text& name, const Text& reason) { m_problems += "\n  \"" + name + "\" " + reason; }

    void Add(const fs::directory_entry& entry) {
        const std::string utf8 = Utf8Of(entry.path().lexically_relative(m_path));
        if (entry.is_directory() && !entry.is_symlink()) return;
        if (!entry.is_regular_file()) return Refuse(Shown(utf8), "is neither a file nor a folder of its own");
        if (utf8.find('\\') != std::string::npos)
            return Refuse(Shown(utf8), "holds a backslash, which separates folders on workstations");
        try {
            AddFile(TextFromUtf8(utf8));
        } catch (const Error&) {
            Refuse(Shown(utf8), "holds characters beyond ISO 8859-1, which messages cannot carry");
        }
    }

    void AddFile(Text name) {
        const Text localPath = m_folder + "/" + name;
        std::replace(name.begin(), name.end(), '/', '\\');
        try {
            FilePieces("").Open(localPath);  // better refused now than at each login
        } catch (const Error& error) {
            return Refuse(name, "cannot be read: " + error.Description());
        }
        m_files.push_back({std::move(name), localPath, ""});
    }

    void RefuseTwins() {
        for (std::size_t index = 1; index < m_files.size(); ++index)
            if (EqualsNoCase(m_files[index - 1].name, m_files[index].name))
                Refuse(m_files[index].name, "differs from another one in case only");
    }

    const Text& m_folder;
    const fs::path m_path;
    std::vector<PublishedFile> m_files;
    Text m_problems;
};

}  // namespace

std::vector<PublishedFile> ReadPublishedFolder(const Text& folder) try {
    return FolderReader(folder).Read();
} catch (const fs::filesystem_error& error) {
    const Text place = error.path1().empty() ? folder : Shown(Utf8Of(error.path1()));
    Raise("cannot publish \"" + place + "\": " + error.code().message());
}

Text NameOfFolder(const Text& folder) {
    const fs::path path = fs::absolute(PathOf(folder)).lexically_normal();
    return TextFromUtf8(Utf8Of(path.has_filename() ? path.filename() : path.parent_path().filename()));
}

}  // namespace rvl::deployserver
