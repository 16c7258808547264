#define SLC_MAJOR_VERSION 5
#define SLC_MINOR_VERSION 0

#include "slcShaderCCodeOp.h"
static QxShaderToken *s_shaderParamsDescr = 0;
typedef struct {
	float z_1;
	float T4_;
	QxStopAndBool T6_;
} QxLocalUniform;

typedef struct {
	float *x_1;
	float *T1_;
	float *T2_;
	float *y_1;
	float *T3_;
	float *q_1;
	QxStopAndBool *T5_;
	float *k_2;
	float *T7_;
	float *T8_;
	QxRGBColor *T9_;
	QxRGBColor *T10_;
	QxRGBColor *T11_;
	QxRGBColor *T12_;
} QxLocalVarying;

static void CreateLocalVars(QxLocalUniform *u, QxLocalVarying *v, unsigned int numMp)
{
	unsigned int polyCnt;

	memset(u, 0, sizeof(QxLocalUniform));

	char *ptr = (char*)QxCalloc(numMp, (24 * sizeof(float) + 0 * sizeof(const char *)));
	v->x_1 = (float*)ptr;
	ptr += (numMp * sizeof(float));
	v->T1_ = (float*)ptr;
	ptr += (numMp * sizeof(float));
	v->T2_ = (float*)ptr;
	ptr += (numMp * sizeof(float));
	v->y_1 = (float*)ptr;
	ptr += (numMp * sizeof(float));
	v->T3_ = (float*)ptr;
	ptr += (numMp * sizeof(float));
	v->q_1 = (float*)ptr;
	ptr += (numMp * sizeof(float));
	v->T5_ = (QxStopAndBool*)ptr;
	ptr += (numMp * sizeof(QxStopAndBool));
	v->k_2 = (float*)ptr;
	ptr += (numMp * sizeof(float));
	v->T7_ = (float*)ptr;
	ptr += (numMp * sizeof(float));
	v->T8_ = (float*)ptr;
	ptr += (numMp * sizeof(float));
	v->T9_ = (QxRGBColor*)ptr;
	ptr += (numMp * sizeof(QxRGBColor));
	v->T10_ = (QxRGBColor*)ptr;
	ptr += (numMp * sizeof(QxRGBColor));
	v->T11_ = (QxRGBColor*)ptr;
	ptr += (numMp * sizeof(QxRGBColor));
	v->T12_ = (QxRGBColor*)ptr;
	ptr += (numMp * sizeof(QxRGBColor));

}

static void DestroyLocalVars(QxLocalUniform *u, QxLocalVarying *v, unsigned int numMp)
{
	unsigned int polyCnt;
	QxFree(v->x_1);
}

static QxDSO *s_theDSOHandles = 0;

static SlcDSOInfo *s_theDSOInfo = 0;

static void QxInitDSO(const QxSearchPath *i_searchPaths)
{
	static int nbCallInitDSO = 0;

	if (nbCallInitDSO == 0)
	{
		++nbCallInitDSO;

		char *fileStr;
		const char *fullFileStr;

	}
}

static void QxCleanupDSO(void)
{
	static int nbCallCleaupDSO = 0;
	if (nbCallCleaupDSO == 0)
	{
	++nbCallCleaupDSO;
	}
}
extern "C" void QX_SHADER_FUNC QxInterfaceVersion(int *o_majorVersion, int *o_minorVersion)
{
	*o_majorVersion = 5;
	*o_minorVersion = 0;
}
extern "C" int QX_SHADER_FUNC QxUseRayTracing(void)
{
	return 0;
}
extern "C" int QX_SHADER_FUNC QxModifyPoint(void)
{
	return 0;
}

#define MATRIX_object 0
#define MATRIX_shader 1

#define INDEX_w 0

extern "C" void QX_SHADER_FUNC QxRegister(QxTokenRegistry *i_registry)
{
	QxToken *registryToken;

	if (s_shaderParamsDescr == 0) {
		s_shaderParamsDescr = QxCreateShaderParamsDescr(1);
	}

	registryToken = QxFindToken( i_registry, "w" );
	s_shaderParamsDescr[0].Init( 
		registryToken, "w", "varying float" );

}

static QxVar *s_visibleVars = 0;

extern "C" void QX_SHADER_FUNC QxInterrogate(const QxSearchPath *i_searchPaths, QxSpaceRegistry *i_spaceRegistry, const QxFrame3D ***o_spaceList, QxShaderInterface::QxType *o_shaderType, QxVar **o_visibleVars, unsigned char **o_isSpaceObject, unsigned char **o_isVisibleOutput, QxToken ***o_hiddenVars, QxShaderInterface::QxDataSize **o_dataSizes)
{
	static int alreadyCalled = 0;
	*o_spaceList = QxCreateSpaceList(2);
	(*o_spaceList)[MATRIX_object] = FindSpace(i_spaceRegistry, "object");
	(*o_spaceList)[MATRIX_shader] = FindSpace(i_spaceRegistry, "shader");
	if (!alreadyCalled)
		s_visibleVars = QxCreateVarsInit(s_shaderParamsDescr, 1);
	static unsigned char isSpaceObject[] = {
		false
	};
	static unsigned char isVisibleOutput[] = {
		false
	};
	static QxToken *hiddenVars[] = {
		(QxToken*)RI_CI,
		(QxToken*)RI_OI,
		(QxToken*)RI_S
	};
	static QxShaderInterface::QxDataSize dataSizes = {
		1,
		3,
		sizeof(QxLocalUniform),
		sizeof(QxLocalVarying),
		2
	};
	*o_shaderType = QxShaderInterface::e_typeSurface;
	*o_visibleVars = s_visibleVars;
	*o_isSpaceObject = isSpaceObject;
	*o_isVisibleOutput = isVisibleOutput;
	*o_hiddenVars = hiddenVars;
	*o_dataSizes = &dataSizes;
	if (i_searchPaths)
	{
		QxInitDSO(i_searchPaths);
	}
	alreadyCalled = 1;
}
extern "C" void QX_SHADER_FUNC QxInitialize(const QxShadingContext &i_context, QxVar *i_visibles,const QxFrame3D **i_spaceList)
{
	QxShaderSupport *shaderSupport = i_context.ShaderSupport();

	typedef struct {
	} QxLocalInitUniform;
	QxLocalInitUniform u;
	memset(&u, 0, sizeof(QxLocalInitUniform));

	if (i_visibles[INDEX_w].UseDefaultValue()) {
	float temp = 0;
	QxInitVarValue(i_visibles[INDEX_w], "", QxTokenInfo::e_constant, 1, &temp);
	}
}
static void QxInitializeAtShadeTime(const QxShadingContext &i_context, QxVar *i_visibles,const QxSurfaceHidden &i_hiddens, unsigned int numMpU, unsigned int numMpV, unsigned int numMp)
{
	QxShaderSupport *shaderSupport = i_context.ShaderSupport();
	unsigned int polyCnt;

	typedef struct {
	} QxLocalInitUniform;
	QxLocalInitUniform u;
	memset(&u, 0, sizeof(QxLocalInitUniform));
	typedef struct {
		float *T0_;
	} QxLocalInitVarying;
	QxLocalInitVarying v;
	char *ptr = (char*)calloc(numMp, 1 * sizeof(float));
	char *initPtr = ptr;
	v.T0_ = (float*)ptr;
	ptr += numMp * sizeof(float);
	if (i_visibles[INDEX_w].UseDefaultValue()) {
	QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	CALL_PRIM_RANDOM_FLOAT(v.T0_[polyCnt]);
	}
	;
	ASSIGN_FLOAT_FLOAT_SIMD(((float*)i_visibles[INDEX_w].Value()), v.T0_);
	}
	free(initPtr);
}
extern "C" void QX_SHADER_FUNC QxDestroy(const QxFrame3D ***o_spaceList)
{
	QxFreeVarsInit(s_visibleVars);
	s_visibleVars = 0x0;
	QxFreeShaderParamsDescr(s_shaderParamsDescr);
	s_shaderParamsDescr = 0x0;
	QxDeleteSpaceList(*o_spaceList);
	*o_spaceList = 0x0;
	QxCleanupDSO();
}
extern "C" void QX_SHADER_FUNC QxEvaluate(unsigned int numMpU, unsigned int numMpV, const QxShadingContext &i_context, const QxSurfaceHidden &i_hiddens, QxVar* i_visibles, unsigned int i_numLights, QxLightInput *i_lights)
{
	QxShaderSupport *shaderSupport = i_context.ShaderSupport();
	bool mustEvalLights = true;
	QxLocalUniform u;
	QxLocalVarying v;
	unsigned int numMp = numMpU * numMpV;
	QxInitializeAtShadeTime(i_context, i_visibles, i_hiddens, numMpU, numMpV, numMp);
	CreateLocalVars(&u, &v, numMp);
	unsigned int polyCnt;
	unsigned int lightCnt = 0;

		QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	INIT_COLOR(i_hiddens.GetCi()[polyCnt], 0.000000e+00, 0.000000e+00, 0.000000e+00);
	}
	QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	INIT_COLOR(i_hiddens.GetOi()[polyCnt], 1.000000e+00, 1.000000e+00, 1.000000e+00);
	}
	QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	CALL_PRIM_RANDOM_FLOAT(v.T1_[polyCnt]);
	}
	QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	ADD_FLOAT_FLOAT(v.T2_[polyCnt], v.T1_[polyCnt], i_hiddens.GetS()[polyCnt]);
	}
	QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	ASSIGN_FLOAT_FLOAT(v.x_1[polyCnt], v.T2_[polyCnt]);
	}
	QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	CALL_PRIM_RANDOM_FLOAT(v.T3_[polyCnt]);
	}
	QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	ASSIGN_FLOAT_FLOAT(v.y_1[polyCnt], v.T3_[polyCnt]);
	}
	CALL_PRIM_RANDOM_FLOAT(u.T4_);
	ASSIGN_FLOAT_FLOAT(u.z_1, u.T4_);
	QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	ASSIGN_FLOAT_FLOAT(v.q_1[polyCnt], 0.000000e+00);
	}
	QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	BOOL_GREATER_THEN_FLOAT_FLOAT(v.T5_[polyCnt], i_hiddens.GetS()[polyCnt], 5.000000e-01);
	}
	SET_UNIFORM_BOOL_FLAG(u.T6_, v.T5_);
	QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	if (BOOL_IS_TRUE(v.T5_[polyCnt])) {
	CALL_PRIM_RANDOM_FLOAT(v.T7_[polyCnt]);
	}
	}
	{
	const float u_z_1 = u.z_1;
	QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	QxStopAndBool v_T5_ = v.T5_[polyCnt];
	float v_T7_ = v.T7_[polyCnt];
	float v_q_1 = v.q_1[polyCnt];
	float v_x_1 = v.x_1[polyCnt];
	float v_y_1 = v.y_1[polyCnt];
	float v_k_2 = {};
	float v_T8_ = {};
	QxRGBColor v_T9_ = {};
	QxRGBColor v_T10_ = {};
	{
	if (BOOL_IS_TRUE(v_T5_)) {
	ASSIGN_FLOAT_FLOAT(v_k_2, v_T7_);
	}
	}
	{
	if (BOOL_IS_TRUE(v_T5_)) {
	MULT_FLOAT_FLOAT(v_T8_, v_k_2, 2.000000e+00);
	}
	}
	{
	if (BOOL_IS_TRUE(v_T5_)) {
	ASSIGN_FLOAT_FLOAT(v_q_1, v_T8_);
	}
	}
	{
	INIT_COLOR(v_T9_, v_x_1, v_y_1, u_z_1);
	}
	{
	ADD_COLOR_FLOAT(v_T10_, v_T9_, v_q_1);
	}
	v.T10_[polyCnt] = v_T10_;
	}
	}
	QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	CALL_PRIM_RANDOM_COLOR(v.T11_[polyCnt]);
	}
	QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	ADD_COLOR_COLOR(v.T12_[polyCnt], v.T10_[polyCnt], v.T11_[polyCnt]);
	}
	QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {
	ASSIGN_COLOR_COLOR(i_hiddens.GetCi()[polyCnt], v.T12_[polyCnt]);
	}
		;

	DestroyLocalVars(&u, &v, numMp);
}
static const char QxShaderFacts[] __attribute__((used, section("QxShaderFacts"))) =
	"1\n"
	"0\n"
	"0\n"
	"3\n"
	"0 1\n"
	"0 1\n"
	"1 0\n"
	"\177" "omb\n"
	"############################################################################\n"
	"# File automatically generated by the ombrium shader compiler.            #\n"
	"# DO NOT EDIT THIS FILE !!!                                                #\n"
	"############################################################################\n"
	"\n"
	"5 0\n"
	"0\n"
	"\n"
	"4\n"
	"3\n"
	"Ci\n"
	"Oi\n"
	"s\n"
	"1\n"
	"\"w\" \"varying float\" \"\" 3 1 1\n"
	"0\n"
	"0\n"
	"0\n"
	"\n"
	"0\n"
	"\n"
	"0\n"
	"0\n"
	"0\n"
	"0\n"
	"0\n"
	"1\n"
	"1\n"
	"0\n"
	"1\n"
	"1 1 0\n"
	"0\n"
	"0\n"
	"4\n"
	"435\n"
	"170\n"
	"4\n"
	"436\n"
	"4\n"
	"\n"
	"0\n"
	"\n"
	"0\n"
	"\n"
	"0\n"
	"0\n"
	"\n"
	"0\n"
	"0\n"
	"0\n"
	;
