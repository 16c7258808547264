/* Queries to other shaders, lights, textures and the scene. */
surface messages(string map = "grid.tx"; output varying color heard = 0;
                 output varying float answers = 0)
{
    uniform float number = 0;
    varying float each = 0;
    color tint = 0;
    point place = 0;
    uniform float size[2] = {0, 0};
    uniform string version = "";

    answers += attribute("user:age", number);
    answers += option("Shutter", size);
    answers += rendererinfo("version", version);
    answers += textureinfo(map, "resolution", size);
    answers += surface("Kd", each);
    answers += displacement("raised", each);
    answers += atmosphere("density", each);
    answers += incident("ior", number);
    answers += opposite("place", place);
    illuminance (P) {
        if (lightsource("tint", tint) == 1)
            heard += Cl * tint;
    }
    if (version != "")
        heard += color(number, each, size[0] + size[1] + zcomp(place));

    Oi = 1;
    Ci = heard;
}
