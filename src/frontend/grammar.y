/* The grammar of the shading language. Expressions and conditions are separate symbols, since a
   condition is not a value. Common syntax errors have their own productions, each with a message. */

%code requires {
#include "frontend/SlcTokenValue.h"

class SlcParseAdvice;

/// The range of a symbol's text.
struct SlcSymbolRange : SlcTextRange {
    SlcSymbolRange() = default;
    SlcSymbolRange(const SlcTextRange& range) : SlcTextRange(range) {}
    /// The generated parser initializes ranges with two lines and columns, which are not used.
    SlcSymbolRange(int, int, int, int) {}
};
}

%code top {
// Without this the stacks of the generated parser, compiled as C++, would never grow.
#define YYSTYPE_IS_TRIVIAL 1
#define YYLTYPE_IS_TRIVIAL 1
// The range of a rule without symbols is empty and follows the symbol before it.
#define YYLLOC_DEFAULT(range, parts, count)                                                        \
    (range) = (count) ? SlcTextRange{YYRHSLOC(parts, 1).begin, YYRHSLOC(parts, count).end}         \
                      : SlcTextRange{YYRHSLOC(parts, 0).end, YYRHSLOC(parts, 0).end}
#define YYINITDEPTH 200
#define YYMAXDEPTH 10000
// The only message of the generated parser itself is the one for a full stack.
#define YY_(text) "parser stack overflow"
}

%code {
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "frontend/SlcParseActions.h"
#include "frontend/SlcParseAdvice.h"
#include "frontend/SlcParseCode.h"
#include "frontend/SlcParserTables.h"
#include "support/SlcDiagnostics.h"

using namespace SlcParseActions;

/// Makes a report of the generated parser at the scanner's position, which is more exact than the
/// range that the parser passes.
static void yyerror(const SlcSymbolRange*, const SlcParseAdvice&, const char* message)
{
    yyerror(message);
}

// The parser reads its tokens through the filter for advice, and aborts if the filter returns none.
// In generated code, `yylex(...)` is the right side of an assignment to `yychar` at the end of a
// block.
#define yylex(value, range)                                                                        \
    (advice.KeepStates(yyss, yyssp + 1), NextToken(advice, *(value), *(range)));                   \
    if (yychar == YYEMPTY)                                                                         \
    YYABORT

/// Adds advice to the report of a missing ";" if another token is more likely to be missing.
static void AdviseOnMissing();
}

%define api.value.type {SlcTokenValue}
%define api.location.type {SlcSymbolRange}
%locations
%define api.pure full
%parse-param {SlcParseAdvice& advice}
/* The scanner sets no value for most operators, so initialize it. The parser's count of errors is
   unused, and some compilers warn about that. */
%initial-action { yylval = {}; yylloc = {}; static_cast<void>(yynerrs); }
%define parse.error custom

/* These conflicts are resolved by a shift: an "else", the ";" after four kinds of statement
   (without it they match a rule that reports it as missing), a string after a type, which becomes
   the name of a space, and the "}" of an empty pair of braces that initializes a shader's array. */
%expect 7

/* Values that own a part of the tree. All others have no node, or one that no value owns: a name,
   literal, type or detail. */
%destructor { Discard($$); }
    definitions definition shader_definition function_definition shader_type
    shader_formals_opt shader_formals shader_formal shader_formal_defs shader_formal_def
    function_formals_opt function_formals function_formal function_formal_defs function_formal_def
    variable_definition variable_defs variable_def array_values_opt array_values
    statements_opt statements statement call_or_local_function semicolon_formals
    loop_statement loop_modifier expression operand assignment lvalue procedure_call arguments
    texture_expr texture_kind texture_name texture_args_opt texture_args condition relational

%token LIGHT SURFACE VOLUME DISPLACEMENT IMAGER VARYING UNIFORM EXTERN OUTPUT
%token VOID FLOAT STRING NORMAL VECTOR POINT COLOR MATRIX
%token RETURN IF ELSE WHILE FOR SOLAR ILLUMINATE ILLUMINANCE BREAK CONTINUE
%token TEXTURE ENVIRONMENT SHADOW
%token LE GE EQ NE OR AND ADD_ASSIGN SUB_ASSIGN MUL_ASSIGN DIV_ASSIGN
%token FLOAT_CONST INT_CONST STRING_CONST IDENTIFIER

/* From loosest to tightest. A symbol per level would cost a reduction per level for each operand. */
%left OR
%left AND
%left '+' '-'
%left '^'
%left '*' '/'
%left '.'
%precedence SIGN

%start shader_file

%%

shader_file
    : definitions                   { SetRoot(Take<SlcDefinitionsNode>($1)); $$.node = nullptr; }
    ;

definitions
    : definition
        { auto node = std::make_unique<SlcDefinitionsNode>();
          node->AddNewDefinition(Take<SlcDefinitionNode>($1)); Put($$, @$, std::move(node)); }
    | definitions definition
        { $$ = $1; As<SlcDefinitionsNode>($$)->AddNewDefinition(Take<SlcDefinitionNode>($2)); }
    ;

definition
    : shader_definition
    | function_definition
    ;

shader_definition
    : shader_type identifier '(' shader_formals_opt ')' '{' statements_opt '}'
        { SlcShaderName() = As<SlcIdentNode>($2)->GetName();
          Put($$, @$, std::make_unique<SlcShaderDefNode>(
                      $1.Position(), Take<SlcShaderTypeNode>($1), As<SlcIdentNode>($2),
                      Take<SlcFormalsNode>($4), Take<SlcStmtsNode>($7))); }
    ;

function_definition
    : identifier '(' function_formals_opt ')' '{' statements_opt '}'
        { Warning("No return type defined for function " + As<SlcIdentNode>($1)->GetName() +
                  " ('float' is assumed)");
          AdviseOnShaderName($1);
          Put($$, @$, Function(@$, $1.Position(), SlcTypeNode::AFloat(), $1, $3, $6)); }
    | type identifier '(' function_formals_opt ')' '{' statements_opt '}'
        { Put($$, @$, Function(@$, $1.Position(), As<SlcTypeNode>($1), $2, $4, $7)); }
    | detail type identifier '(' function_formals_opt ')' '{' statements_opt '}'
        { WarnOfIgnoredDetail($3);
          Put($$, @$, Function(@$, $1.Position(), As<SlcTypeNode>($2), $3, $5, $8)); }
    ;

shader_type
    : LIGHT                         { Put($$, @$, std::make_unique<SlcLightShaderTypeNode>()); }
    | SURFACE                       { Put($$, @$, std::make_unique<SlcSurfaceShaderTypeNode>()); }
    | VOLUME                        { Put($$, @$, std::make_unique<SlcVolumeShaderTypeNode>()); }
    | DISPLACEMENT                  { Put($$, @$, std::make_unique<SlcDisplacementShaderTypeNode>()); }
    | IMAGER                        { Put($$, @$, std::make_unique<SlcImagerShaderTypeNode>()); }
    ;

shader_formals_opt
    : %empty                        { PutHere($$, @$, std::make_unique<SlcFormalsNode>()); }
    | shader_formals
    | shader_formals ';'
    ;

shader_formals
    : shader_formal
        { auto node = std::make_unique<SlcFormalsNode>();
          node->AddVarDef(Take<SlcVarDefsNode>($1)); Put($$, @$, std::move(node)); }
    | shader_formals ';' shader_formal
        { $$ = $1; As<SlcFormalsNode>($$)->AddVarDef(Take<SlcVarDefsNode>($3)); }
    ;

function_formals_opt
    : %empty                        { PutHere($$, @$, std::make_unique<SlcFormalsNode>()); }
    | function_formals
    | function_formals ';'
    ;

function_formals
    : function_formal
        { auto node = std::make_unique<SlcFormalsNode>();
          node->AddVarDef(Take<SlcVarDefsNode>($1)); Put($$, @$, std::move(node)); }
    | function_formals ';' function_formal
        { $$ = $1; As<SlcFormalsNode>($$)->AddVarDef(Take<SlcVarDefsNode>($3)); }
    ;

shader_formal
    : type shader_formal_defs
        { Put($$, @$, Declaration($1.Position(), SlcStorageSpecNode::AInput(),
                              SlcDetailNode::AUniform(), $1, $2)); }
    | OUTPUT type shader_formal_defs
        { Put($$, @$, Declaration($1.Position(), SlcStorageSpecNode::AOutput(),
                              SlcDetailNode::AUniform(), $2, $3)); }
    | detail type shader_formal_defs
        { Put($$, @$, Declaration($1.Position(), SlcStorageSpecNode::AInput(),
                              As<SlcDetailNode>($1), $2, $3)); }
    | OUTPUT detail type shader_formal_defs
        { Put($$, @$, Declaration($1.Position(), SlcStorageSpecNode::AOutput(),
                              As<SlcDetailNode>($2), $3, $4)); }
    ;

shader_formal_defs
    : shader_formal_def
        { auto node = std::make_unique<SlcDefExprsNode>();
          node->AddDefExpr(Take<SlcDefExprNode>($1)); Put($$, @$, std::move(node)); }
    | shader_formal_defs ',' shader_formal_def
        { $$ = $1; As<SlcDefExprsNode>($$)->AddDefExpr(Take<SlcDefExprNode>($3)); }
    ;

shader_formal_def
    : identifier
        { yyerror("'=' expected"); Put($$, @$, Definition($1, nullptr, nullptr)); }
    | identifier '[' array_size_opt ']'
        { yyerror("'=' expected"); Put($$, @$, Definition($1, &$3, nullptr)); }
    | identifier '=' expression
        { Put($$, @$, Definition($1, nullptr, &$3)); }
    | identifier '[' array_size_opt ']' '=' '{' '}'
        { yyerror("An array needs a valid initializer");
          Put($$, @$, Definition($1, &$3, nullptr)); }
    | identifier '[' array_size_opt ']' '=' '{' array_values_opt '}'
        { Put($$, @$, Definition($1, &$3, &$7)); }
    ;

function_formal
    : type function_formal_defs
        { Put($$, @$, Declaration($1.Position(), SlcStorageSpecNode::AInput(),
                              SlcDetailNode::AUnknown(), $1, $2)); }
    | OUTPUT type function_formal_defs
        { Put($$, @$, Declaration($1.Position(), SlcStorageSpecNode::AOutput(),
                              SlcDetailNode::AUnknown(), $2, $3)); }
    | detail type function_formal_defs
        { Put($$, @$, Declaration($1.Position(), SlcStorageSpecNode::AInput(),
                              As<SlcDetailNode>($1), $2, $3)); }
    | OUTPUT detail type function_formal_defs
        { Put($$, @$, Declaration($1.Position(), SlcStorageSpecNode::AOutput(),
                              As<SlcDetailNode>($2), $3, $4)); }
    ;

function_formal_defs
    : function_formal_def
        { auto node = std::make_unique<SlcDefExprsNode>();
          node->AddDefExpr(Take<SlcDefExprNode>($1)); Put($$, @$, std::move(node)); }
    | function_formal_defs ',' function_formal_def
        { $$ = $1; As<SlcDefExprsNode>($$)->AddDefExpr(Take<SlcDefExprNode>($3)); }
    ;

function_formal_def
    : identifier
        { Put($$, @$, Definition($1, nullptr, nullptr)); }
    | identifier '[' array_size_opt ']'
        { Put($$, @$, Definition($1, &$3, nullptr)); }
    | identifier '=' expression
        { yyerror("No default value allowed for function formal");
          Put($$, @$, Definition($1, nullptr, &$3)); }
    | identifier '[' array_size_opt ']' '=' '{' array_values_opt '}'
        { yyerror("No default value allowed for function formal");
          Put($$, @$, Definition($1, &$3, &$7)); }
    ;

variable_definition
    : type variable_defs
        { Put($$, @$, Declaration($1.Position(), SlcStorageSpecNode::ALocal(),
                              SlcDetailNode::AUnknown(), $1, $2)); }
    | EXTERN type variable_defs
        { Put($$, @$, Declaration($1.Position(), SlcStorageSpecNode::AExtern(),
                              SlcDetailNode::AUnknown(), $2, $3)); }
    | detail type variable_defs
        { Put($$, @$, Declaration($1.Position(), SlcStorageSpecNode::ALocal(),
                              As<SlcDetailNode>($1), $2, $3)); }
    | EXTERN detail type variable_defs
        { Put($$, @$, Declaration($1.Position(), SlcStorageSpecNode::AExtern(),
                              As<SlcDetailNode>($2), $3, $4)); }
    ;

variable_defs
    : variable_def
        { auto node = std::make_unique<SlcDefExprsNode>();
          node->AddDefExpr(Take<SlcDefExprNode>($1)); Put($$, @$, std::move(node)); }
    | variable_defs ',' variable_def
        { $$ = $1; As<SlcDefExprsNode>($$)->AddDefExpr(Take<SlcDefExprNode>($3)); }
    ;

variable_def
    : identifier
        { Put($$, @$, Definition($1, nullptr, nullptr)); }
    | identifier '[' array_size_opt ']'
        { Put($$, @$, Definition($1, &$3, nullptr)); }
    | identifier '=' expression
        { Put($$, @$, Definition($1, nullptr, &$3)); }
    | identifier '[' array_size_opt ']' '=' '{' array_values_opt '}'
        { Put($$, @$, Definition($1, &$3, &$7)); }
    ;

array_values_opt
    : %empty
        { PutHere($$, @$, std::make_unique<SlcArrayExprNode>(SlcScanner::Position())); }
    | array_values
    ;

array_values
    : expression
        { auto node = std::make_unique<SlcArrayExprNode>(SlcScanner::Position());
          node->AddExpr(Take<SlcExprNode>($1)); PutHere($$, @$, std::move(node)); }
    | array_values ',' expression
        { $$ = $1; As<SlcArrayExprNode>($$)->AddExpr(Take<SlcExprNode>($3)); }
    ;

array_size_opt
    : %empty
        { const SlcPosition here = SlcScanner::Position();
          $$ = {SlcLexicalNode::CreateInt(0, false), here.line, here.column, here.file}; }
    | array_size
    ;

array_size
    : integer
    ;

detail
    : VARYING                       { $$.node = SlcDetailNode::AVarying(); }
    | UNIFORM                       { $$.node = SlcDetailNode::AUniform(); }
    ;

type
    : base_type
    | base_type '[' ']'
        { $$.node = SlcTypeNode::CreateArrayType(As<SlcTypeNode>($1)); }
    | base_type '[' FLOAT_CONST ']'
        { $$.node = SizedArray($1, $3); }
    ;

base_type
    : FLOAT                         { $$.node = SlcTypeNode::AFloat(); }
    | STRING                        { $$.node = SlcTypeNode::AString(); }
    | POINT                         { $$.node = SlcTypeNode::APoint(); }
    | VECTOR                        { $$.node = SlcTypeNode::AVector(); }
    | NORMAL                        { $$.node = SlcTypeNode::ANormal(); }
    | COLOR                         { $$.node = SlcTypeNode::AColor(); }
    | MATRIX                        { $$.node = SlcTypeNode::AMatrix(); }
    | VOID                          { $$.node = SlcTypeNode::AVoid(); }
    ;

statements_opt
    : %empty
        { PutHere($$, @$, std::make_unique<SlcStmtsNode>(SlcScanner::Position())); }
    | statements
    ;

statements
    : statement
        { Put($$, @$, std::make_unique<SlcStmtsNode>(Take<SlcStmtNode>($1))); }
    | statements statement
        { $$ = $1; As<SlcStmtsNode>($$)->AddStatement(Take<SlcStmtNode>($2)); RejectIfTooHigh($$); }
    ;

statement
    : assignment ';'
        { Put($$, @$, std::make_unique<SlcAssignStmtNode>($1.Position(), Take<SlcAssignExprNode>($1))); }
    | assignment
        { yyerror("';' expected at this point");
          AdviseOnMissing();
          Put($$, @$, std::make_unique<SlcAssignStmtNode>($1.Position(), Take<SlcAssignExprNode>($1))); }
    | RETURN expression ';'
        { Put($$, @$, std::make_unique<SlcReturnStmtNode>($1.Position(), Take<SlcExprNode>($2))); }
    | RETURN expression
        { yyerror("';' expected");
          AdviseOnMissing();
          Put($$, @$, std::make_unique<SlcReturnStmtNode>($1.Position(), Take<SlcExprNode>($2))); }
    | loop_modifier ';'
    | loop_modifier                 { yyerror("';' expected"); AdviseOnMissing(); $$ = $1; }
    | IF condition statement
        { Put($$, @$, std::make_unique<SlcIfThenStmtNode>($1.Position(), Take<SlcRelationNode>($2),
                                                      Take<SlcStmtNode>($3))); }
    | IF condition statement ELSE statement
        { Put($$, @$, std::make_unique<SlcIfThenElseStmtNode>(
                      $1.Position(), Take<SlcRelationNode>($2), Take<SlcStmtNode>($3),
                      Take<SlcStmtNode>($5))); }
    | loop_statement
    | '{' statements_opt '}'        { $$.node = Braced($2, @$); }
    | variable_definition ';'
        { Put($$, @$, std::make_unique<SlcVarDefsStmtNode>($1.Position(), Take<SlcVarDefsNode>($1))); }
    | variable_definition
        { yyerror("';' expected");
          AdviseOnMissing();
          Put($$, @$, std::make_unique<SlcVarDefsStmtNode>($1.Position(), Take<SlcVarDefsNode>($1))); }
    | call_or_local_function
    | ';'
        { PutHere($$, @$, std::make_unique<SlcStmtsNode>(SlcScanner::Position())); }
    | error ';'
        { Warning("Compilation resumes here");
          $$ = $2; Put($$, @$, std::make_unique<SlcStmtsNode>($2.Position())); }
    | error '}'
        { Warning("Compilation resumes here");
          $$ = $2; Put($$, @$, std::make_unique<SlcStmtsNode>($2.Position())); }
    ;

call_or_local_function
    : procedure_call ';'
        { Put($$, @$, std::make_unique<SlcProcCallStmtNode>($1.Position(),
                                                        Take<SlcProcCallExprNode>($1))); }
    | procedure_name '(' ')' '{' statements_opt '}'
        { Put($$, @$, FunctionWithoutType(@$, $1.Position(), $1, $5)); }
    | procedure_name '(' arguments ')' '{' statements_opt '}'
        { Discard($3); Put($$, @$, FunctionWithoutType(@$, $1.Position(), $1, $6)); }
    | procedure_name '(' arguments ';' ')' '{' statements_opt '}'
        { Discard($3); Put($$, @$, FunctionWithoutType(@$, $1.Position(), $1, $7)); }
    | procedure_name '(' arguments ';' semicolon_formals ')' '{' statements_opt '}'
        { Discard($3); Discard($5); Put($$, @$, FunctionWithoutType(@$, $1.Position(), $1, $8)); }
    | procedure_name '(' arguments ';' semicolon_formals ';' ')' '{' statements_opt '}'
        { Discard($3); Discard($5); Put($$, @$, FunctionWithoutType(@$, $1.Position(), $1, $9)); }
    | type procedure_name '(' function_formals_opt ')' '{' statements_opt '}'
        { Put($$, @$, std::make_unique<SlcFuncDefStmtNode>(
                      $1.Position(),
                      Function(@$, $1.Position(), As<SlcTypeNode>($1), $2, $4, $7))); }
    | detail type procedure_name '(' function_formals_opt ')' '{' statements_opt '}'
        { WarnOfIgnoredDetail($3);
          Put($$, @$, std::make_unique<SlcFuncDefStmtNode>(
                      $1.Position(),
                      Function(@$, $1.Position(), As<SlcTypeNode>($2), $3, $5, $8))); }
    ;

semicolon_formals
    : function_formal
        { auto node = std::make_unique<SlcFormalsNode>();
          node->AddVarDef(Take<SlcVarDefsNode>($1)); Put($$, @$, std::move(node)); }
    | semicolon_formals ';' function_formal
        { $$ = $1; As<SlcFormalsNode>($$)->AddVarDef(Take<SlcVarDefsNode>($3)); }
    ;

loop_statement
    : WHILE condition statement
        { Put($$, @$, std::make_unique<SlcWhileStmtNode>($1.Position(), Take<SlcRelationNode>($2),
                                                     Take<SlcStmtNode>($3))); }
    | FOR '(' expression ';' condition ';' expression ')' statement
        { Put($$, @$, std::make_unique<SlcForStmtNode>(
                      $1.Position(), Take<SlcExprNode>($3), Take<SlcRelationNode>($5),
                      Take<SlcExprNode>($7), Take<SlcStmtNode>($9))); }
    | SOLAR '(' ')' statement
        { Put($$, @$, std::make_unique<SlcSolarStmtNode>($1.Position(), nullptr, nullptr,
                                                     Take<SlcStmtNode>($4))); }
    | SOLAR '(' expression ',' expression ')' statement
        { Put($$, @$, std::make_unique<SlcSolarStmtNode>($1.Position(), Take<SlcExprNode>($3),
                                                     Take<SlcExprNode>($5),
                                                     Take<SlcStmtNode>($7))); }
    | ILLUMINATE '(' expression ')' statement
        { Put($$, @$, std::make_unique<SlcIlluminateStmtNode>($1.Position(), Take<SlcExprNode>($3),
                                                          nullptr, nullptr,
                                                          Take<SlcStmtNode>($5))); }
    | ILLUMINATE '(' expression ',' expression ',' expression ')' statement
        { Put($$, @$, std::make_unique<SlcIlluminateStmtNode>(
                      $1.Position(), Take<SlcExprNode>($3), Take<SlcExprNode>($5),
                      Take<SlcExprNode>($7), Take<SlcStmtNode>($9))); }
    | ILLUMINANCE '(' expression ')' statement
        { Put($$, @$, std::make_unique<SlcIlluminanceStmtNode>($1.Position(), Take<SlcExprNode>($3),
                                                           nullptr, nullptr,
                                                           Take<SlcStmtNode>($5))); }
    | ILLUMINANCE '(' expression ',' expression ')' statement
        { WarnOfLightCategory();
          Discard($3);
          Put($$, @$, std::make_unique<SlcIlluminanceStmtNode>($1.Position(), Take<SlcExprNode>($5),
                                                           nullptr, nullptr,
                                                           Take<SlcStmtNode>($7))); }
    | ILLUMINANCE '(' expression ',' expression ',' expression ')' statement
        { Put($$, @$, std::make_unique<SlcIlluminanceStmtNode>(
                      $1.Position(), Take<SlcExprNode>($3), Take<SlcExprNode>($5),
                      Take<SlcExprNode>($7), Take<SlcStmtNode>($9))); }
    | ILLUMINANCE '(' expression ',' expression ',' expression ',' expression ')' statement
        { WarnOfLightCategory();
          Discard($3);
          Put($$, @$, std::make_unique<SlcIlluminanceStmtNode>(
                      $1.Position(), Take<SlcExprNode>($5), Take<SlcExprNode>($7),
                      Take<SlcExprNode>($9), Take<SlcStmtNode>($11))); }
    ;

loop_modifier
    : BREAK
        { Put($$, @$, std::make_unique<SlcBreakStmtNode>($1.Position())); }
    | BREAK integer
        { Put($$, @$, std::make_unique<SlcBreakStmtNode>($1.Position(), As<SlcIntConstNode>($2))); }
    | CONTINUE
        { Put($$, @$, std::make_unique<SlcContinueStmtNode>($1.Position())); }
    | CONTINUE integer
        { Put($$, @$, std::make_unique<SlcContinueStmtNode>($1.Position(), As<SlcIntConstNode>($2))); }
    ;

expression
    : assignment
    | operand
    | condition '?' expression ':' expression
        { Put($$, @$, std::make_unique<SlcCondExprNode>($1.Position(), Take<SlcRelationNode>($1),
                                                        Take<SlcExprNode>($3),
                                                        Take<SlcExprNode>($5))); }
    ;

operand
    : identifier
        { Put($$, @$, std::make_unique<SlcIdentExprNode>($1.Position(), As<SlcIdentNode>($1))); }
    | integer
        { Put($$, @$, std::make_unique<SlcConstExprNode>(
                      $1.Position(),
                      SlcLexicalNode::CreateFloat(As<SlcIntConstNode>($1)->GetValue()))); }
    | FLOAT_CONST
        { Put($$, @$, std::make_unique<SlcConstExprNode>($1.Position(), As<SlcFloatConstNode>($1))); }
    | string_literal
        { Put($$, @$, std::make_unique<SlcConstExprNode>($1.Position(),
                                                     As<SlcStringLiteralNode>($1))); }
    | '(' expression ')'            { $$.node = $2.node; }
    | '(' expression ',' expression ',' expression ')'
        { Put($$, @$, std::make_unique<SlcPointExprNode>($1.Position(), Take<SlcExprNode>($2),
                                                         Take<SlcExprNode>($4),
                                                         Take<SlcExprNode>($6))); }
    | '(' expression ',' expression ',' expression ',' expression ',' expression ',' expression
          ',' expression ',' expression ',' expression ',' expression ',' expression
          ',' expression ',' expression ',' expression ',' expression ',' expression ')'
        { Put($$, @$, std::make_unique<SlcMatrixExprNode>(
              $1.Position(),
              std::array<std::unique_ptr<SlcExprNode>, 16>{
                  Take<SlcExprNode>($2), Take<SlcExprNode>($4), Take<SlcExprNode>($6),
                  Take<SlcExprNode>($8), Take<SlcExprNode>($10), Take<SlcExprNode>($12),
                  Take<SlcExprNode>($14), Take<SlcExprNode>($16), Take<SlcExprNode>($18),
                  Take<SlcExprNode>($20), Take<SlcExprNode>($22), Take<SlcExprNode>($24),
                  Take<SlcExprNode>($26), Take<SlcExprNode>($28), Take<SlcExprNode>($30),
                  Take<SlcExprNode>($32)})); }
    | identifier '[' expression ']'
        { Put($$, @$, std::make_unique<SlcArrayRefExprNode>($1.Position(), As<SlcIdentNode>($1),
                                                            Take<SlcExprNode>($3))); }
    | procedure_call
    | texture_expr
    | '-' operand %prec SIGN
        { Put($$, @$, std::make_unique<SlcUMinusExprNode>($1.Position(), Take<SlcExprNode>($2))); }
    | base_type space_opt operand %prec SIGN
        { Put($$, @$, Cast($1, $2, $3)); }
    | operand '.' operand
        { Put($$, @$, std::make_unique<SlcDotProdExprNode>(Take<SlcExprNode>($1),
                                                           Take<SlcExprNode>($3))); }
    | operand '*' operand
        { Put($$, @$, std::make_unique<SlcMultExprNode>(Take<SlcExprNode>($1),
                                                        Take<SlcExprNode>($3))); }
    | operand '/' operand
        { Put($$, @$, std::make_unique<SlcDivExprNode>(Take<SlcExprNode>($1),
                                                       Take<SlcExprNode>($3))); }
    | operand '^' operand
        { Put($$, @$, std::make_unique<SlcCrossProdExprNode>(Take<SlcExprNode>($1),
                                                             Take<SlcExprNode>($3))); }
    | operand '+' operand
        { Put($$, @$, std::make_unique<SlcAddExprNode>(Take<SlcExprNode>($1),
                                                       Take<SlcExprNode>($3))); }
    | operand '-' operand
        { Put($$, @$, std::make_unique<SlcSubExprNode>(Take<SlcExprNode>($1),
                                                       Take<SlcExprNode>($3))); }
    ;

space_opt
    : %empty                        { PutHere($$, @$, std::unique_ptr<SlcSyntaxNode>()); }
    | string_literal
    ;

assignment
    : lvalue '=' expression
        { Put($$, @$, std::make_unique<SlcEqAssignExprNode>(Take<SlcLValueNode>($1),
                                                            Take<SlcExprNode>($3))); }
    | lvalue ADD_ASSIGN expression
        { Put($$, @$, std::make_unique<SlcAddAssignExprNode>(Take<SlcLValueNode>($1),
                                                             Take<SlcExprNode>($3))); }
    | lvalue SUB_ASSIGN expression
        { Put($$, @$, std::make_unique<SlcSubAssignExprNode>(Take<SlcLValueNode>($1),
                                                             Take<SlcExprNode>($3))); }
    | lvalue MUL_ASSIGN expression
        { Put($$, @$, std::make_unique<SlcMultAssignExprNode>(Take<SlcLValueNode>($1),
                                                              Take<SlcExprNode>($3))); }
    | lvalue DIV_ASSIGN expression
        { Put($$, @$, std::make_unique<SlcDivAssignExprNode>(Take<SlcLValueNode>($1),
                                                             Take<SlcExprNode>($3))); }
    ;

lvalue
    : identifier
        { Put($$, @$, std::make_unique<SlcIdentLValueNode>($1.Position(), As<SlcIdentNode>($1))); }
    | identifier '[' expression ']'
        { Put($$, @$, std::make_unique<SlcArrayRefLValueNode>($1.Position(), As<SlcIdentNode>($1),
                                                          Take<SlcExprNode>($3))); }
    ;

integer
    : INT_CONST
    ;

string_literal
    : STRING_CONST
    ;

identifier
    : IDENTIFIER
    | LIGHT                         { $$.node = KeywordAsIdent("light"); }
    | SURFACE                       { $$.node = KeywordAsIdent("surface"); }
    | VOLUME                        { $$.node = KeywordAsIdent("volume"); }
    | DISPLACEMENT                  { $$.node = KeywordAsIdent("displacement"); }
    | IMAGER                        { $$.node = KeywordAsIdent("imager"); }
    ;

procedure_call
    : procedure_name '(' ')'
        { Put($$, @$, std::make_unique<SlcProcCallExprNode>(
                      $1.Position(), As<SlcIdentNode>($1),
                      std::make_unique<SlcProcArgsNode>($1.Position()))); }
    | procedure_name '(' arguments ')'
        { Put($$, @$, std::make_unique<SlcProcCallExprNode>($1.Position(), As<SlcIdentNode>($1),
                                                            Take<SlcProcArgsNode>($3))); }
    ;

procedure_name
    : identifier
    ;

arguments
    : expression
        { auto node = std::make_unique<SlcProcArgsNode>();
          node->AddArg(Take<SlcExprNode>($1)); Put($$, @$, std::move(node)); }
    | arguments ',' expression
        { $$ = $1; As<SlcProcArgsNode>($$)->AddArg(Take<SlcExprNode>($3)); }
    ;

texture_expr
    : texture_kind '(' texture_name texture_args_opt ')'
        { Put($$, @$, std::make_unique<SlcTextureExprNode>(
                      $1.Position(), Take<SlcTextureTypeNode>($1), Take<SlcTextureFilenameNode>($3),
                      ChannelZero(), Take<SlcTextureArgsNode>($4))); }
    | texture_kind '(' texture_name '[' expression ']' texture_args_opt ')'
        { Put($$, @$, std::make_unique<SlcTextureExprNode>(
                      $1.Position(), Take<SlcTextureTypeNode>($1), Take<SlcTextureFilenameNode>($3),
                      std::make_unique<SlcChannelNode>(Take<SlcExprNode>($5)),
                      Take<SlcTextureArgsNode>($7))); }
    | texture_kind '(' texture_name '[' expression ']' '[' expression ']' texture_args_opt ')'
        { Put($$, @$, std::make_unique<SlcTextureExprNode>(
                      $1.Position(), Take<SlcTextureTypeNode>($1),
                      ElementName({@3.begin, @6.end}, $1.Position(), $3, $5),
                      std::make_unique<SlcChannelNode>(Take<SlcExprNode>($8)),
                      Take<SlcTextureArgsNode>($10))); }
    ;

texture_kind
    : TEXTURE
        { Put($$, @$, std::make_unique<SlcTextureTypeTextureNode>(SlcScanner::Position())); }
    | ENVIRONMENT
        { Put($$, @$, std::make_unique<SlcTextureTypeEnvNode>(SlcScanner::Position())); }
    | SHADOW
        { Put($$, @$, std::make_unique<SlcTextureTypeShadowNode>(SlcScanner::Position())); }
    ;

texture_name
    : identifier
        { Put($$, @$, TextureName(@$, std::make_unique<SlcIdentExprNode>(
                                          $1.Position(), As<SlcIdentNode>($1)))); }
    | string_literal
        { Put($$, @$, TextureName(@$, std::make_unique<SlcConstExprNode>(
                                          $1.Position(), As<SlcStringLiteralNode>($1)))); }
    ;

texture_args_opt
    : %empty                        { PutHere($$, @$, std::make_unique<SlcTextureArgsNode>()); }
    | texture_args
    ;

texture_args
    : ',' expression
        { auto node = std::make_unique<SlcTextureArgsNode>();
          node->AddTextureArg(Take<SlcExprNode>($2)); Put($$, @$, std::move(node)); }
    | texture_args ',' expression
        { $$ = $1; As<SlcTextureArgsNode>($$)->AddTextureArg(Take<SlcExprNode>($3)); }
    ;

relational
    : '(' condition ')'             { $$.node = $2.node; }
    | '!' relational
        { Put($$, @$, std::make_unique<SlcNotRelNode>($1.Position(), Take<SlcRelationNode>($2))); }
    | operand '<' operand
        { Put($$, @$, std::make_unique<SlcLessThenNode>(Take<SlcExprNode>($1),
                                                        Take<SlcExprNode>($3))); }
    | operand '>' operand
        { Put($$, @$, std::make_unique<SlcGreaterThenNode>(Take<SlcExprNode>($1),
                                                           Take<SlcExprNode>($3))); }
    | operand LE operand
        { Put($$, @$, std::make_unique<SlcLessEqualNode>(Take<SlcExprNode>($1),
                                                         Take<SlcExprNode>($3))); }
    | operand GE operand
        { Put($$, @$, std::make_unique<SlcGreaterEqualNode>(Take<SlcExprNode>($1),
                                                            Take<SlcExprNode>($3))); }
    ;

condition
    : relational
    | operand EQ operand
        { Put($$, @$, std::make_unique<SlcEqualRelNode>(Take<SlcExprNode>($1),
                                                        Take<SlcExprNode>($3))); }
    | operand NE operand
        { Put($$, @$, std::make_unique<SlcNotEqualRelNode>(Take<SlcExprNode>($1),
                                                           Take<SlcExprNode>($3))); }
    | condition AND condition
        { Put($$, @$, std::make_unique<SlcLogAndNode>(Take<SlcRelationNode>($1),
                                                      Take<SlcRelationNode>($3))); }
    | condition OR condition
        { Put($$, @$, std::make_unique<SlcLogOrNode>(Take<SlcRelationNode>($1),
                                                     Take<SlcRelationNode>($3))); }
    ;

%%

namespace {

/// Runs the tables of the parser without its actions.
class Tables : public SlcParserTables {
public:
    [[nodiscard]] std::size_t CountAccepted(std::span<const std::int16_t> stack,
                                            std::span<const int> tokens) const override
    {
        std::vector<int> states(stack.begin(), stack.end());
        std::size_t count = 0;
        while (count < tokens.size() && !states.empty() &&
               Accepts(states, YYTRANSLATE(tokens[count])))
            ++count;
        return count;
    }

private:
    /// Performs the reductions that the symbol selects, then shifts it. Returns false if the symbol
    /// is rejected.
    [[nodiscard]] static bool Accepts(std::vector<int>& states, yysymbol_kind_t symbol)
    {
        for (;;) {
            int action = yypact[states.back()];
            const int entry = action + symbol;
            const bool isShift = !yypact_value_is_default(action) && entry >= 0 &&
                                 entry <= YYLAST && yycheck[entry] == symbol;
            action = isShift ? yytable[entry] : -yydefact[states.back()];
            if (action > 0) {
                states.push_back(action);
                return true;
            }
            if (states.back() == YYFINAL && symbol == YYSYMBOL_YYEOF)
                return true;
            if (action == 0 || (isShift && yytable_value_is_error(action)) ||
                !Reduce(states, -action))
                return false;
        }
    }

    /// Performs one reduction and returns true; for a rule that reports a missing token, only
    /// returns false.
    [[nodiscard]] static bool Reduce(std::vector<int>& states, int rule)
    {
        const int left = yyr1[rule];
        const int last = yystos[states.back()];
        if (left == YYSYMBOL_statement &&
            (last == YYSYMBOL_assignment || last == YYSYMBOL_expression ||
             last == YYSYMBOL_loop_modifier ||
             last == YYSYMBOL_variable_definition))
            return false;
        if (left == YYSYMBOL_shader_formal_def && last != YYSYMBOL_expression &&
            last != YYTRANSLATE(static_cast<int>('}')))
            return false;
        states.resize(states.size() - static_cast<std::size_t>(yyr2[rule]));
        const int entry = yypgoto[left - YYNTOKENS] + states.back();
        const bool isEntry = entry >= 0 && entry <= YYLAST && yycheck[entry] == states.back();
        states.push_back(isEntry ? yytable[entry] : yydefgoto[left - YYNTOKENS]);
        return true;
    }
};

}  // namespace

static int yyreport_syntax_error(const yypcontext_t*, SlcParseAdvice&)
{
    // Do not list all tokens that could have followed: there are too many to be helpful.
    static_cast<void>(&yypcontext_expected_tokens);
    const std::string advice = Advice().Rejected(Tables());
    if (yyerror("parse error"); !advice.empty())
        Advise(advice);
    return 0;
}

static void AdviseOnMissing()
{
    if (const std::string advice = Advice().Missing(Tables()); !advice.empty())
        Advise(advice);
}

#undef yylex
