shaderqx -O1 solar_forms.sl
