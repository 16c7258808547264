#include "host/ShaderFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace {

std::string Read(const std::filesystem::path& file)
{
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

}  // namespace

ShaderFolder::ShaderFolder()
    : m_path(std::filesystem::temp_directory_path() / ("slc_host_" + std::to_string(::getpid())))
{
    std::filesystem::create_directories(m_path);
}

ShaderFolder::~ShaderFolder()
{
    std::filesystem::remove_all(m_path);
}

std::string ShaderFolder::Build(const std::string& name, const std::string& source,
                                const std::string& options,
                                const std::string& compilerOptions) const
{
    std::ofstream(m_path / (name + ".sl")) << source;
    const std::string command = "cd '" + m_path.string() + "' && SLC_CC_OPTIONS='" +
                                compilerOptions + "' " SLC_PROGRAM " " + options + " " + name +
                                ".sl >messages 2>&1";
    if (std::system(command.c_str()) != 0)
        ADD_FAILURE() << Read(m_path / "messages") << source;
    return m_path / (name + ".sqx");
}
