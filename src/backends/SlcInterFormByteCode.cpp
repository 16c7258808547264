// The byte-code writer's part of the compiled shader.

#include "backends/SlcFileInProgress.h"
#include "backends/SlcGenByteCode.h"

void SlcInterForm::GenByteCode(const std::string& directory)
{
    SlcFileInProgress file(m_errors, directory + '/' + m_shaderName->GetName() + ".sqx",
                           "byte-code generation");
    SlcGenByteCode(m_errors, file.Out()).GenByteCode(*this);
    file.Finish();
}
