// The member function of the compiled shader that writes C++.

#include "backends/SlcFileInProgress.h"
#include "backends/SlcGenCCode.h"

void SlcInterForm::GenCCode(const std::string& directory)
{
    const std::string name = m_shaderName->GetName() + ".cpp";
    SlcFileInProgress file(m_errors, directory + '/' + name, name, "C++ code generation");
    SlcText text;
    SlcGenCCode(m_errors, &m_options, text).GenCCode(*this);
    file.Finish(text.Str());
}
