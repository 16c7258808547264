echo > a.txt; shaderqx a.txt
