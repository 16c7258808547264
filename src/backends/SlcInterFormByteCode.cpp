// The member function of the compiled shader that writes byte-code.

#include "backends/SlcFileInProgress.h"
#include "backends/SlcGenByteCode.h"

void SlcInterForm::GenByteCode(const std::string& directory)
{
    const std::string path = directory + '/' + m_shaderName->GetName() + ".sqx";
    SlcFileInProgress file(m_errors, path, path, "byte-code generation");
    SlcText text;
    SlcGenByteCode(m_errors, text).GenByteCode(*this);
    file.Finish(text.Str());
}
