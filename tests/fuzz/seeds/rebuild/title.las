~V
VERS. 2.0 :
~Well
STRT.M 1 :
XWELL. 1 : x YWELL. 2 : y ~Curve
DEPT.M :
~A
1 2
