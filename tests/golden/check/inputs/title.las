~V
VERS. 2.0 : v
WRAP. NO : w
~W
STRT.M 1 : s
STOP.M 3 : s
STEP.M 1 : s
NULL. -999.25 : n
XWELL. 12 : x YWELL. 34 : y ~Curve
DEPT.M : d
GR.GAPI : g
~A
1 5
2 6
3 7
