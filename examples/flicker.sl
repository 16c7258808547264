/* Torchlight: brightness and color vary with time around a mean. */
light flicker(float intensity = 1; uniform float rate = 8; uniform float depth = 0.3;
              color cold = color(1, 0.4, 0.1); color hot = color(1, 0.8, 0.5);
              point from = point "shader" (0, 0, 0))
{
    uniform float flame = 1 + depth * (2 * noise(rate * time) - 1);

    illuminate (from)
        Cl = intensity * flame * mix(cold, hot, clamp(flame / 2, 0, 1)) / (L . L);
}
