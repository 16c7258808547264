// The byte-code writer's part of the compiled shader: the file appears whole or not at all.

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>

#include "backends/SlcGenByteCode.h"
#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"

void SlcInterForm::GenByteCode(const std::string& directory)
{
    const std::string path = directory + '/' + m_shaderName->GetName() + ".sqx";
    std::ostringstream text;
    SlcGenByteCode(m_errors, text).GenByteCode(*this);
    if (!m_errors->NoError())
        throw SlcCompilationError();

    const std::string unfinished = path + ".tmp";
    std::ofstream file(unfinished, std::ios::binary | std::ios::trunc);
    if (!file)
        m_errors->FatalError("Cannot open " + path + " for byte-code generation");
    file << text.view();
    file.close();
    if (file && std::rename(unfinished.c_str(), path.c_str()) == 0)
        return;
    m_errors->Error(nullptr, "Cannot write " + path + ": " + std::strerror(errno));
    std::remove(unfinished.c_str());
    throw SlcCompilationError();
}
