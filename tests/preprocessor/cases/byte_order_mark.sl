#define A 1
A bom \  
 x