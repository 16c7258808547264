#include "backends/SlcWholeFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>

#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"

void SlcWriteWholeFile(const SlcPtr<SlcSemanticError>& errors, const std::string& path,
                       std::string_view text, std::string_view purpose)
{
    const std::string unfinished = path + ".tmp";
    std::ofstream file(unfinished, std::ios::binary | std::ios::trunc);
    if (!file)
        errors->FatalError("Cannot open " + path + " for " + std::string(purpose));
    file << text;
    file.close();
    if (file && std::rename(unfinished.c_str(), path.c_str()) == 0)
        return;
    errors->Error(nullptr, "Cannot write " + path + ": " + std::strerror(errno));
    std::remove(unfinished.c_str());
    throw SlcCompilationError();
}
