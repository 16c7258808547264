imager background(color bgcolor = (0.1, 0.2, 0.6); string picture = "")
{
    color behind = bgcolor;
    if (picture != "")
        behind = color texture(picture, xcomp(P), ycomp(P));
    Ci += (1 - alpha) * behind;
    Oi = 1;
    alpha = 1;
}
