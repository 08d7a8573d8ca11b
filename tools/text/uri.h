#pragma once

#include <string>
#include <string_view>

// A path as the reference of a URI: relative as it is, absolute with "file://", each byte that
// could mean something else percent-encoded.
std::string uri_of_path(std::string_view path);
