/*
 * Raised writing, whose height comes from a map. The writing rises along the normal in the shader's
 * space, so that its height does not depend on how the object is scaled in the scene.
 */
displacement embossed(string map = "letters.tx"; float height = 0.1; uniform float soft = 0.01;
                      uniform float truedisplace = 1)
{
    normal Nn = normalize(N);
    float raised = height * float texture(map, s, t, "blur", soft, "fill", 0);
    float unit = length(vtransform("shader", Nn));
    point Praised = P + raised / unit * Nn;

    N = calculatenormal(Praised);
    if (truedisplace == 1)
        P = Praised;
}
