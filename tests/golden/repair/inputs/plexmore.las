# Ascii save
~Version
VERS.	2.0 : v
~Well Information
STRT.M	100 : s
STOP.M	103 : s
STEP.M	1 : s
CN . Acme : c
RIG . Number 7 : r
~Curve
DEPTH .M : d
POR .M3/M3 : n
~Parameter
~A
100 0.1
101 -999250.000
102
103 0.2
