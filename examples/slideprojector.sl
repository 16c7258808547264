/*
 * Projects a picture: the lamp shines through a slide, in a separate space whose z axis is the
 * beam. Outside the picture there is no light.
 */
light slideprojector(float intensity = 1; string slide = "slide.tx"; string space = "shader";
                     uniform float fieldofview = 40; uniform float aspect = 1.5;
                     uniform float softness = 0)
{
    uniform point from = transform(space, "current", point(0, 0, 0));
    uniform vector beam = vtransform(space, "current", vector(0, 0, 1));
    uniform float height = tan(radians(fieldofview) / 2);

    illuminate (from, beam, atan(height * sqrt(1 + aspect * aspect))) {
        point Pslide = transform("current", space, Ps);
        float ss = xcomp(Pslide) / (aspect * height * zcomp(Pslide));
        float tt = ycomp(Pslide) / (height * zcomp(Pslide));

        if (abs(ss) > 1 || abs(tt) > 1)
            Cl = 0;
        else
            Cl = intensity * color texture(slide, 0.5 + 0.5 * ss, 0.5 - 0.5 * tt, "blur", softness);
    }
}
