#pragma once

class SlcControlFlowGraph;
class SlcDataflowAnalysis;

/// Settles the detail of the locals that are written outside parallel runs: what a whole-grid
/// instruction writes is varying. For the C++ back end, which stores a temp-uniform variable once.
///
/// Temporaries that live inside one parallel run keep the unknown detail, which the back ends
/// take for varying: the bracket that ends a run writes nothing, so that none of them is found to
/// belong to it.
void SlcConvertTmpVarDetail(const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis);
