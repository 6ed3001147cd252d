~Version
VERS. 2.0 : LAS
WRAP. YES : Wrap
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
~Ascii
100
1 2
101
3 -999.25
102
5 6
103
7 8
104
9 10
