// The shader's name is a keyword of C++, and so are those of its variables.
surface class(float int = 1; varying float new = u;)
{
    float return_ = int * new;
    color struct = color(return_, int, new);
    Ci = struct;
    Oi = 1;
}
