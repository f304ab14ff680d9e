#include "ui/icon_picture.h"

#include <wx/image.h>
#include <wx/log.h>
#include <wx/mstream.h>

#include <algorithm>
#include <cstdint>

#include "platform/files.h"
#include "runtime/file.h"
#include "util/handle_error.h"

namespace rvl {
namespace {

constexpr std::int64_t kMostBytes = 1 << 20;
constexpr std::uint32_t kMostPixels = 1024;  ///< of either side

constexpr TextView kPngStart("\x89PNG\r\n\x1a\n", 8);
constexpr TextView kIconStart("\0\0\1\0", 4);

/// An unsigned number of the file; 0 beyond its end.
std::uint32_t LittleEndian(TextView bytes, std::size_t offset, std::size_t count) {
    std::uint32_t number = 0;
    for (std::size_t i = count; i-- > 0;)
        number =
            number << 8 | (offset + i < bytes.size() ? static_cast<unsigned char>(bytes[offset + i]) : 0);
    return number;
}

std::uint32_t BigEndian(TextView bytes, std::size_t offset) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i)
        number = number << 8 | LittleEndian(bytes, offset + i, 1);
    return number;
}

bool IsSensible(std::uint32_t width, std::uint32_t height) {
    return width - 1 < kMostPixels && height - 1 < kMostPixels;
}

wxImage Decoded(TextView bytes, wxBitmapType type, int index = -1) {
    wxMemoryInputStream stream(bytes.data(), bytes.size());
    wxImage image;
    image.LoadFile(stream, type, index);
    return image;
}

/// The sizes are looked at first: a small file can claim any.
wxImage DecodedPng(TextView bytes) {
    constexpr std::size_t kWidth = 16, kHeight = 20;
    if (!IsSensible(BigEndian(bytes, kWidth), BigEndian(bytes, kHeight))) return {};
    return Decoded(bytes, wxBITMAP_TYPE_PNG);
}

/// The entry of an icon file whose width comes next to the one that is wanted, the richer in colours of two.
int BestEntry(TextView bytes, int size) {
    constexpr std::size_t kCount = 4, kEntries = 6, kEntrySize = 16, kBitCount = 6;
    const auto count = static_cast<int>(LittleEndian(bytes, kCount, 2));
    const auto score = [&](int entry) {
        const std::size_t start = kEntries + kEntrySize * static_cast<std::size_t>(entry);
        const auto width = static_cast<int>(LittleEndian(bytes, start, 1));
        const int missing = size - (width == 0 ? 256 : width);
        // What has to be made smaller looks better than what is too small.
        const int distance = missing > 0 ? 1000 + missing : -missing;
        return distance * 256 - static_cast<int>(LittleEndian(bytes, start + kBitCount, 2) & 0xFF);
    };
    int best = 0;
    for (int entry = 1; entry < count; ++entry)
        if (score(entry) < score(best)) best = entry;
    return best;
}

wxImage DecodedIcon(TextView bytes, int size) {
    const int entry = BestEntry(bytes, size);
    const std::size_t start = 6 + 16 * static_cast<std::size_t>(entry);
    const std::size_t offset = LittleEndian(bytes, start + 12, 4), length = LittleEndian(bytes, start + 8, 4);
    if (offset >= bytes.size()) return {};
    const TextView picture = bytes.substr(offset, length);
    if (picture.starts_with(kPngStart)) return DecodedPng(picture);
    if (!IsSensible(LittleEndian(picture, 4, 4), LittleEndian(picture, 8, 4) / 2)) return {};
    return Decoded(bytes, wxBITMAP_TYPE_ICO, entry);
}

wxImage DecodedFile(const Text& path, int size) {
    std::int64_t length = 0;
    if (platform::FileLength(path, length) != 0 || length <= 0 || length > kMostBytes) return {};
    File file;
    file.OpenFile(path, platform::FileAccess::Read, platform::FileShare::ReadWrite,
                  platform::FileDisposition::OpenExisting);
    const Text bytes = file.ReadData(length);
    if (bytes.starts_with(kPngStart)) return DecodedPng(bytes);
    return bytes.starts_with(kIconStart) ? DecodedIcon(bytes, size) : wxImage();
}

void InstallDecoders() {
    static const bool installed = [] {
        wxImage::AddHandler(new wxPNGHandler);  // the toolkit owns them
        wxImage::AddHandler(new wxICOHandler);
        return true;
    }();
    (void)installed;
}

/// In the middle of a transparent square, its proportions kept.
wxBitmap Fitted(wxImage image, int size) {
    if (!image.HasAlpha()) image.InitAlpha();
    const int longer = std::max(image.GetWidth(), image.GetHeight());
    if (longer > size)
        image.Rescale(std::max(1, image.GetWidth() * size / longer),
                      std::max(1, image.GetHeight() * size / longer), wxIMAGE_QUALITY_HIGH);
    const wxPoint place((size - image.GetWidth()) / 2, (size - image.GetHeight()) / 2);
    return wxBitmap(image.Size(wxSize(size, size), place));
}

}  // namespace

wxBitmap IconPicture(const Text& path, int size) try {
    InstallDecoders();
    const wxLogNull quiet;  // what the decoders say of broken files
    const wxImage image = DecodedFile(path, size);
    return image.IsOk() ? Fitted(image, size) : wxBitmap();
} catch (const Error&) {  // the file may have gone meanwhile
    return {};
}

}  // namespace rvl
