#pragma once

#include <string>

#include "icode/SlcShaderFacts.h"
#include "support/SlcOptionsControl.h"

class SlcGenInterCode;
class SlcSemanticError;

/// The compiled shader: the shader's facts and the main list of instructions. It is the only
/// interface between the checked tree on one side and the optimizer and writers on the other. The
/// optimizer changes only the main list. The writers number operands and merge equal constants. The
/// tree must outlive the form, since operands point into the tree.
///
/// Call, in this order, `GenInterForm`, `Optimize`, and one of the two writers.
class SlcInterForm : public SlcShaderFacts {
public:
    /// `options` must outlive this object.
    explicit SlcInterForm(SlcOptionsControl& options);
    ~SlcInterForm();

    /// Fills the facts and the main list from the checked tree. Throws `SlcCompilationError` if
    /// errors were reported. Call it once.
    void GenInterForm(SlcSyntaxNode* root);
    /// Runs the passes that the options select over the main list. The lists of default values are
    /// not optimized. Defined in `optimizer`.
    void Optimize();
    /// Writes `<directory>/<shader>.cpp`. If there are errors, throws `SlcCompilationError` and
    /// neither creates nor changes that file. Defined in `backends`.
    void GenCCode(const std::string& directory);
    /// Does the same for `<directory>/<shader>.sqx`, the byte-code file. Defined in `backends`.
    void GenByteCode(const std::string& directory);

    SlcPtr<SlcSemanticError> m_errors;  // of the lowering and of the writers
    SlcPtr<SlcListICode> m_mainList;
    SlcOptionsControl& m_options;
    SlcPtr<SlcGenInterCode> m_codeGenerator;
};
