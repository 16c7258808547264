#pragma once

#include <string>

#include "icode/SlcShaderFacts.h"
#include "support/SlcOptionsControl.h"

class SlcGenInterCode;
class SlcSemanticError;

/// The compiled shader: the one hand-over point between the checked tree and the optimizer and
/// writers: the facts and the main list. It is a record that the writers read directly; the
/// optimizer changes only the main list. The tree must outlive it, since operands point into it.
///
/// The driver calls, in this order, `GenInterForm`, `Optimize`, and one of the two writers.
class SlcInterForm : public SlcShaderFacts {
public:
    /// `options` outlive it.
    explicit SlcInterForm(SlcOptionsControl& options);
    ~SlcInterForm();

    /// Fills every field from the checked tree. Throws `SlcCompilationError` if that reported
    /// errors. Once for a form.
    void GenInterForm(SlcSyntaxNode* root);
    /// Runs the passes that the options select over the main list; lists of default values stay as
    /// they are. Defined in `optimizer`.
    void Optimize();
    /// Writes `<directory>/<shader>.cpp`. Throws `SlcCompilationError` after errors, and then
    /// leaves no file. Defined in `backends`.
    void GenCCode(const std::string& directory);
    /// Writes `<directory>/<shader>.sqx`. Throws `SlcCompilationError` after errors and then
    /// leaves no file. Defined in `backends`.
    void GenByteCode(const std::string& directory);

    SlcPtr<SlcSemanticError> m_errors;  // counts what any stage reports
    SlcPtr<SlcListICode> m_mainList;
    SlcOptionsControl& m_options;
    SlcPtr<SlcGenInterCode> m_codeGenerator;
};
