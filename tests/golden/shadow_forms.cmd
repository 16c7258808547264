shaderqx -O1 shadow_forms.sl
