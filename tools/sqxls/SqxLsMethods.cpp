#include "sqxls/SqxLsMethods.h"

#include "sqxls/SqxLsActions.h"
#include "sqxls/SqxLsColors.h"
#include "sqxls/SqxLsCompletion.h"
#include "sqxls/SqxLsFolding.h"
#include "sqxls/SqxLsFormatting.h"
#include "sqxls/SqxLsHover.h"
#include "sqxls/SqxLsInlayHints.h"
#include "sqxls/SqxLsLens.h"
#include "sqxls/SqxLsNavigation.h"
#include "sqxls/SqxLsRename.h"
#include "sqxls/SqxLsSemanticTokens.h"
#include "sqxls/SqxLsSignature.h"
#include "sqxls/SqxLsSymbols.h"

std::span<const SqxLsMethod> SqxLsMethods()
{
    static constexpr SqxLsMethod k_methods[] = {
        {"textDocument/hover", SqxLsHover},
        {"textDocument/completion", SqxLsCompletion},
        {"completionItem/resolve", SqxLsResolveCompletion},
        {"textDocument/signatureHelp", SqxLsSignatureHelp},
        {"textDocument/definition", SqxLsDefinition},
        {"textDocument/references", SqxLsReferences},
        {"textDocument/documentHighlight", SqxLsHighlights},
        {"textDocument/prepareRename", SqxLsPrepareRename},
        {"textDocument/rename", SqxLsRename},
        {"textDocument/documentSymbol", SqxLsDocumentSymbols},
        {"workspace/symbol", SqxLsWorkspaceSymbols},
        {"textDocument/semanticTokens/full", SqxLsSemanticTokens},
        {"textDocument/inlayHint", SqxLsInlayHints},
        {"textDocument/documentColor", SqxLsDocumentColors},
        {"textDocument/colorPresentation", SqxLsColorPresentations},
        {"textDocument/codeAction", SqxLsCodeActions},
        {"textDocument/codeLens", SqxLsLenses},
        {"workspace/executeCommand", SqxLsExecute},
        {"textDocument/formatting", SqxLsFormat},
        {"textDocument/rangeFormatting", SqxLsFormatRange},
        {"textDocument/foldingRange", SqxLsFoldingRanges},
        {"textDocument/selectionRange", SqxLsSelectionRanges},
    };
    return k_methods;
}

SqxJson SqxLsCapabilities()
{
    SqxJson capabilities = SqxJson::parse(R"json({
        "positionEncoding": "utf-16",
        "textDocumentSync": {"openClose": true, "change": 2, "save": {"includeText": false}},
        "hoverProvider": true,
        "completionProvider": {"resolveProvider": true, "triggerCharacters": ["\"", "#", "/", "<"]},
        "signatureHelpProvider": {"triggerCharacters": ["(", ","], "retriggerCharacters": [")"]},
        "definitionProvider": true,
        "referencesProvider": true,
        "documentHighlightProvider": true,
        "renameProvider": {"prepareProvider": true},
        "documentSymbolProvider": true,
        "workspaceSymbolProvider": true,
        "semanticTokensProvider": {"full": true},
        "inlayHintProvider": true,
        "colorProvider": true,
        "codeActionProvider": {"codeActionKinds": ["quickfix", "refactor.rewrite"]},
        "codeLensProvider": {},
        "documentFormattingProvider": true,
        "documentRangeFormattingProvider": true,
        "foldingRangeProvider": true,
        "selectionRangeProvider": true
})json");
    capabilities["semanticTokensProvider"]["legend"] = SqxLsSemanticLegend();
    capabilities["executeCommandProvider"]["commands"].push_back(k_sqxLsPreview);
    return capabilities;
}
