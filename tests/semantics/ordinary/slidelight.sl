light slidelight(float intensity = 1; point from = point "shader" (0, 0, 0);
                 point to = point "shader" (0, 0, 1); point up = point "shader" (0, 1, 0);
                 float fov = radians(60); string slidename = "")
{
    vector axis = normalize(to - from);
    vector right = (up - from) ^ axis;
    right = normalize(right);
    vector top = normalize(axis ^ right);
    float spread = 1 / tan(fov / 2);
    illuminate(from, axis, atan(1.4142136 / spread)) {
        float depth = L . axis;
        float Pu = (L . right) / depth;
        float Pv = (L . top) / depth;
        if (slidename == "")
            Cl = intensity;
        else
            Cl = intensity * color texture(slidename, spread * 0.5 * (Pu + 1), spread * 0.5 * (1 - Pv));
    }
}
