#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace anvil_test {

inline std::string content_of(const std::filesystem::path& path) {
    std::ostringstream content;
    content << std::ifstream{path, std::ios::binary}.rdbuf();
    return content.str();
}

inline void make_file(const std::filesystem::path& path, std::string_view content) {
    std::ofstream file{path, std::ios::binary};
    file << content;
}

/// The lines of a file without their ends; a last line that has no end is marked.
inline std::vector<std::string> lines_of(const std::filesystem::path& path) {
    std::vector<std::string> lines;
    const std::string content = content_of(path);
    for (std::size_t begin = 0; begin < content.size();) {
        const auto end = content.find('\n', begin);
        if (end == std::string::npos) {
            lines.push_back(content.substr(begin) + "<no line end>");
            break;
        }
        lines.push_back(content.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

/// What stands behind the process number of a line that a sink wrote.
inline std::string text_of(const std::string& line) {
    std::size_t position = 0;
    for (int bracket = 0; bracket < 3; ++bracket) {
        position = line.find("] ", position);
        if (position == std::string::npos)
            return "<no line of a sink> " + line;
        position += 2;
    }
    return line.substr(position);
}

inline std::vector<std::string> texts_of(const std::filesystem::path& path) {
    std::vector<std::string> texts;
    for (const auto& line : lines_of(path))
        texts.push_back(text_of(line));
    return texts;
}

} // namespace anvil_test
