// The names of the shader and of its variables are keywords of C++.
surface class(float int = 1; varying float new = u;)
{
    float return_ = int * new;
    color struct = color(return_, int, new);
    Ci = struct;
    Oi = 1;
}
