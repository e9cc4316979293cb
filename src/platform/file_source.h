// A file as a source of bytes.
#pragma once

#include <string>

#include "base/byte_source.h"
#include "platform/files.h"

namespace kalmora {

class FileSource final : public ByteSource {
public:
    bool Open(const std::string& path) { return file_.Open(path); }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> into) const override {
        return file_.ReadAt(offset, into);
    }
    std::uint64_t Size() const override { return file_.Size(); }

private:
    files::InputFile file_;
};

}  // namespace kalmora
