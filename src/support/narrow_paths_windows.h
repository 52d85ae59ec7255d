#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// Read before every source file of a Windows build: the standard library takes each byte of a text for a
// character of the path that it makes of it, but texts are UTF-8. `PathFrom` is the way; paths of literals
// stay possible.
namespace std::filesystem {

template <>
path::path<std::string, path>(const std::string&, path::format) = delete;
template <>
path::path<std::string_view, path>(const std::string_view&, path::format) = delete;
template <>
path& path::operator=<std::string>(const std::string&) = delete;
template <>
path& path::operator=<std::string_view>(const std::string_view&) = delete;
template <>
path& path::operator/=<std::string>(const std::string&) = delete;
template <>
path& path::operator/=<std::string_view>(const std::string_view&) = delete;
template <>
path& path::operator+=<std::string>(const std::string&) = delete;

}  // namespace std::filesystem
