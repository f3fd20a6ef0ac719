#include "native/file_view.h"

#include <utility>

#include "core/bytes.h"

#if defined(__unix__) || defined(__APPLE__)
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#define VELK_HAVE_MMAP 1
#endif

namespace velk::native {

FileView FileView::Open(const std::filesystem::path& file) {
  FileView view;
#ifdef VELK_HAVE_MMAP
  const int fd = ::open(file.c_str(), O_RDONLY);
  if (fd >= 0) {
    struct stat info {};
    if (::fstat(fd, &info) == 0 && S_ISREG(info.st_mode) && info.st_size > 0) {
      const auto size = static_cast<std::size_t>(info.st_size);
      void* mapping = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, fd, 0);
      if (mapping != MAP_FAILED) {
        view.mapping_ = mapping;
        view.mappedSize_ = size;
        view.bytes_ = {static_cast<const std::uint8_t*>(mapping), size};
        view.valid_ = true;
      }
    }
    ::close(fd);
    if (view.valid_) return view;
  }
#endif
  // Empty files, special files and systems without mapping take a plain copy.
  if (auto bytes = core::ReadWholeFile(file.string())) {
    view.copy_ = std::move(*bytes);
    view.bytes_ = view.copy_;
    view.valid_ = true;
  }
  return view;
}

FileView::FileView(FileView&& other) noexcept { *this = std::move(other); }

FileView& FileView::operator=(FileView&& other) noexcept {
  std::swap(valid_, other.valid_);
  std::swap(mapping_, other.mapping_);
  std::swap(mappedSize_, other.mappedSize_);
  copy_.swap(other.copy_);
  std::swap(bytes_, other.bytes_);
  if (!mapping_) bytes_ = copy_;
  if (!other.mapping_) other.bytes_ = other.copy_;
  return *this;
}

FileView::~FileView() {
#ifdef VELK_HAVE_MMAP
  if (mapping_) ::munmap(mapping_, mappedSize_);
#endif
}

}  // namespace velk::native
