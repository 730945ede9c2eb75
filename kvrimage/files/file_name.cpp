#include "kvrimage/files/file_name.h"

#include "kvrimage/diagnostics/visible_text.h"

namespace kvrimage {

std::string title_of_input(const std::string& path) {
    return path == "-" ? "standard input" : make_visible(path).text;
}

std::string title_of_output(const std::string& path) {
    return path == "-" ? "standard output" : make_visible(path).text;
}

} // namespace kvrimage
