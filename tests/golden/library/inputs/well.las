~Version
 VERS. 2.0 : CWLS
 WRAP. NO :
~Well
 STRT.M 1 :
 STOP.M 2 :
 STEP.M 1 :
 NULL. -999.25 :
~Curve
 DEPT.M : DEPTH
 ECGR.GAPI : GAMMA
 RHOZ.K/M3 : DENSITY
 SP.MV : POTENTIAL
 GR.GAPI : GAMMA
~Ascii
 1 2 3 4 5
 2 3 4 5 6
