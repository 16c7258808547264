/* Clear water: it absorbs red light first, and adds blue light that it scatters. */
volume underwater(uniform float absorption[3] = {0.45, 0.08, 0.03};
                  color murk = color(0, 0.15, 0.25))
{
    float far = length(I);
    color left = color(exp(-absorption[0] * far), exp(-absorption[1] * far),
                       exp(-absorption[2] * far));

    Ci = Ci * left + murk * (1 - left);
    Oi = 1 - (1 - Oi) * left;
}
