// Tested by tests/sqxshade/SqxShadeTest.cpp and tests/sqxview.

#include "process/SqxScratchFolder.h"

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <system_error>

SqxScratchFolder::SqxScratchFolder(std::string_view name)
{
    std::string path =
        (std::filesystem::temp_directory_path() / (std::string(name) + "-XXXXXX")).string();
    if (!mkdtemp(path.data()))
        throw std::runtime_error("Cannot make a temporary folder '" + path + "'");
    m_path = path;
}

SqxScratchFolder::~SqxScratchFolder()
{
    Remove();
}

void SqxScratchFolder::Remove() const
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}
