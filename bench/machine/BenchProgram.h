#pragma once

#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "host/QxByteCodeShader.h"
#include "host/QxHost.h"

/// Returns the contents of NAME.bc. Throws `QxHostError` if it cannot be read.
[[nodiscard]] inline std::string BenchBytesOf(const std::string& name)
{
    std::ifstream file(name + ".bc", std::ios::binary);
    std::string bytes = {std::istreambuf_iterator<char>(file), {}};
    if (!file)
        throw QxHostError("Cannot read '" + name + ".bc'");
    return bytes;
}

/// Returns the shader in the byte-code file NAME.bc, which then runs with these kernels. Throws
/// `QxHostError` if the file cannot be read or is refused.
[[nodiscard]] inline std::shared_ptr<const QxShader> BenchProgram(const std::string& name,
                                                                  QxKernelChoice kernels)
{
    return std::make_shared<QxByteCodeShader>(BenchBytesOf(name), name, std::vector<std::string>(),
                                              kernels);
}
