#pragma once
// What every fuzz target does with its input: the bytes become one file of a data set in a
// folder of this process (beside fixed real companions for the folder formats), and the file is
// opened as the program opens it: the type detector, then the reader of the format registry.
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>

namespace velk::fuzz {

// name: the file the input becomes ("x.jdx", "ser", "procpar"); companions: files copied once
// from companionFolder into the same folder; opened: the file the program is asked to open (the
// data file of a folder format), name when empty.
void ReadBytesAs(const std::string& name, const std::uint8_t* data, std::size_t size,
                 std::initializer_list<const char*> companions = {}, const std::string& companionFolder = {},
                 const std::string& opened = {});

// The Ver.4 reader on the bytes themselves (the program maps the file, which would hide a read
// past its end from the address sanitizer): the 2D and the 1D reading of one buffer.
void ReadVer4Bytes(const std::uint8_t* data, std::size_t size);

}  // namespace velk::fuzz
