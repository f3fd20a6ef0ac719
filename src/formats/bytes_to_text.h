#pragma once
// Text fields cut from fixed-width byte fields of binary files (JEOL Delta, Alice and others).
#include <cstdint>
#include <string>

#include "core/bytes.h"

namespace velk::formats {

// The text of length bytes from offset: bytes 1-128 and 160-223 are single characters, 129-159
// and 224-252 are Shift-JIS lead bytes that take the next byte with them unless that pair would
// cross the end of the field, byte 0 is skipped (it does not end the text) and every other value
// is dropped. The part of the field outside bytes is ignored. The result is UTF-8.
std::string BytesToText(core::Bytes bytes, std::uint64_t offset, std::uint64_t length);

}  // namespace velk::formats
