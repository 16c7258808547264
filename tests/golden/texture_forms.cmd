shaderqx -O1 texture_forms.sl
