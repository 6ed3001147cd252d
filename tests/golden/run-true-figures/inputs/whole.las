# made by hand
~Version
 WRAP. NO : one
 CREA. 2020 : when
~Core
 C1.M 12 : core
~Well
# a comment
 STRT.hh:mm 1 : s
 STOP.hh:mm 3 : e
 STEP.hh:mm 1 : t
 WELL. A:B C : name
 REM. xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx : long
no header line
~Curve
#MNEM.UNIT
# about curves
 DEPT.hh:mm : t
 RHOB.KG/M^3 : d
~Permeability
 K.MD 1 : k
~Custom
 free text
~Parameter
# param
 BS.IN 8 : b
~Parameter again
 BS2.IN 9 : b
~A TIME OLD
1 2
2 3
3 4
