~WELL
 STRT.F       3285.76115                                                                                     :START
 STOP.F       3280.83990                                                                                     :STOP
 STEP.F       -1.64042                                                                                       :STEP
 NULL.        -9999.00000                                                                                    :NULL VALUE
 COMP.        NORTH RIDGE                                                                                    :COMPANY
 WELL.        RIDGE 4                                                                                        :WELL
~VERSION
 VERS.        2.00                                         :CWLS LOG ASCII STANDARD
 WRAP.        NO                                           :WRAP MODE
~CURVE
#MNEM.UNIT    VALUE                                        :DESCRIPTION
#----.----    ---------------                              :-------------------
 DEPT.F       00 001 00 00                                 :Depth Index
   GR.GAPI                                                 :GAMMA RAY
 RHOB.G/C3                                                 :DENSITY
~ASCII   DEPT           GR         RHOB
   3285.76115     40.00000      2.40000
   3284.12073     30.00000  -9999.00000
   3282.48031     20.00000      2.20000
   3280.83990     10.00000      2.10000
