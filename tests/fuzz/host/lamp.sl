/* A light that queries the scene. */
light lamp(float power = 1; varying float each = 2; output float made = 0; string tag = "t";
           point from = point "shader" (0, 0, 0))
{
    uniform float k = 0;
    surface("Kd", k);
    made = k * power;
    illuminate (from) Cl = each * transmission(Ps, from) * shadow("s", Ps);
}
