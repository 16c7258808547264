shaderqx -O1 illuminate_forms.sl
