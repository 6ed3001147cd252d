~Version
VERS. 2.0 : LAS
WRAP. NO : Wrap
~Well
STRT.M 100 : Start
STOP.M 104 : Stop
STEP.M 1 : Step
NULL. -999.25 : Null
COMP. Acme : Company
WELL. Heron 4 : Well
~Curve
DEPT.M : Depth
GR.GAPI 31 : Gamma
RHOB.G/C3 : Density
~A
100 1 2
104 2 3
101 1e300 -1e-300
