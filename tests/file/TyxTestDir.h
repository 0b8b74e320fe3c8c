// A fresh temporary directory for one test, removed with all it holds.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

namespace tyx::test {

class TyxTestDir {
public:
    TyxTestDir()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "tyx_test_XXXXXX").string();
        if (::mkdtemp(pattern.data()))
            m_path = pattern;
        EXPECT_FALSE(m_path.empty()) << "mkdtemp failed";
    }
    ~TyxTestDir()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::filesystem::path &path() const { return m_path; }
    /// \p name inside the directory, as UTF-8.
    std::string file(const std::string &name) const { return (m_path / name).string(); }
    /// Creates the file \p name holding \p contents.
    void write(const std::string &name, const std::string &contents) const
    {
        std::ofstream(m_path / name, std::ios::binary) << contents;
    }
    std::string read(const std::string &name) const
    {
        std::ifstream in(m_path / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }

private:
    std::filesystem::path m_path;
};

/// Changes the current directory for one scope.
class TyxCurrentDir {
public:
    explicit TyxCurrentDir(const std::filesystem::path &path) : m_previous(std::filesystem::current_path())
    {
        std::filesystem::current_path(path);
    }
    ~TyxCurrentDir() { std::filesystem::current_path(m_previous); }

private:
    std::filesystem::path m_previous;
};

} // namespace tyx::test
