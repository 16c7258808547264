surface brick(float width = 0.25, height = 0.08, mortar = 0.01;
              color brickcolor = (0.6, 0.1, 0.1), mortarcolor = (0.6, 0.6, 0.6))
{
    uniform float bmwidth = width + mortar;
    uniform float bmheight = height + mortar;
    float ss = s / bmwidth, tt = t / bmheight;
    if (mod(tt * 0.5, 1) > 0.5)
        ss += 0.5;
    float sbrick = floor(ss);
    float tbrick = floor(tt);
    ss -= sbrick;
    tt -= tbrick;
    uniform float mw = mortar * 0.5 / bmwidth, mh = mortar * 0.5 / bmheight;
    float w = step(mw, ss) - step(1 - mw, ss);
    float h = step(mh, tt) - step(1 - mh, tt);
    color Ct = mix(mortarcolor, brickcolor, w * h);
    Ct *= 0.9 + 0.2 * float noise(sbrick + 0.5, tbrick + 0.5);
    Oi = Os;
    Ci = Oi * Ct * diffuse(faceforward(normalize(N), I));
}
