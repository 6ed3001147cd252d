# Ascii save
# platform
~Version
VERS.	2.0 : v
~Well Information
STRT.M	100 : s
STOP.M	102 : s
STEP.M	1 : s
CN .	Acme : c
WN . Heron : w
~Curve
DEPTH .M	: d
NPHI .M3/M3 : n
A:B .OHM.M : r
~Parameter
COMPANY . Acme : c
~A
100 0.1 2
101 -999250.000 3
102 5
103 0.2 123456789012345
