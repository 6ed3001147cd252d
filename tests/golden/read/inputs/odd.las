~V
 VERS. 2.0 :
 WRAP. NO :
~W
 STRT.M 1 :
 STOP.M 2 :
 STEP.M 1 :
 NULL. -9 :
~C
 DEPT.M : d
 GR,"x".API : a
 GR : b
 GR.U : c
 XTR : d
~A
1 1e-20 .5 1d25
2 3 -9 -.25
