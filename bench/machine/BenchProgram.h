#pragma once

#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "host/QxByteCodeShader.h"
#include "host/QxHost.h"

[[nodiscard]] inline std::string BenchBytesOf(const std::string& name)
{
    std::ifstream file(name + ".bc", std::ios::binary);
    std::string bytes = {std::istreambuf_iterator<char>(file), {}};
    if (!file)
        throw QxHostError("Cannot read '" + name + ".bc'");
    return bytes;
}

/// Reads the byte-code in NAME.bc, to run with these kernels.
[[nodiscard]] inline std::shared_ptr<const QxShader> BenchProgram(const std::string& name,
                                                                  QxKernelChoice kernels)
{
    return std::make_shared<QxByteCodeShader>(BenchBytesOf(name), name, std::vector<std::string>(),
                                              kernels);
}
