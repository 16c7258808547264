#include "helpers/ShaderFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

std::string ShaderFolder::Build(const std::string& name, const std::string& source,
                                const std::string& options,
                                const std::string& compilerOptions) const
{
    Write(name + ".sl", source);
    const std::string command = "SLC_CC_OPTIONS='" + compilerOptions + "' " SLC_PROGRAM " " +
                                options + " " + name + ".sl >messages 2>&1";
    if (std::system(command.c_str()) != 0)
        ADD_FAILURE() << Read("messages") << source;
    return m_path / (name + ".sqx");
}
