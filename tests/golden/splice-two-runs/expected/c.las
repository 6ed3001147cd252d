~VERSION
 VERS.        2.00                                         :CWLS LOG ASCII STANDARD
 WRAP.        NO                                           :WRAP MODE
~WELL
 STRT.M       1000.00000                                                                                     :START
 STOP.M       1002.00000                                                                                     :STOP
 STEP.M       0.50000                                                                                        :STEP
 NULL.        -999.25000                                                                                     :NULL VALUE
 COMP.        NORTH RIDGE                                                                                    :COMPANY
 WELL.        RIDGE 4                                                                                        :WELL
~CURVE
#MNEM.UNIT    VALUE                                        :DESCRIPTION
#----.----    ---------------                              :-------------------
 DEPT.M       00 001 00 00                                 :Depth Index
   GR.GAPI                                                 :GAMMA RAY
 RHOB.G/C3                                                 :DENSITY
~PARAMETER
#MNEM.UNIT    VALUE                                        :DESCRIPTION
#----.----    ---------------                              :-------------------
 RUN1.        1                                            :Run Identification mnemonic for Run #1
 RUN2.        2                                            :Run Identification mnemonic for Run #2
 RUNS.        2                                            :Number of runs available
  BHT.DEGC    85                                           :HOLE TEMPERATURE | RUN1
  BHT.DEGC    85                                           :HOLE TEMPERATURE | RUN2
~ASCII   DEPT           GR         RHOB
   1000.00000     10.00000      2.10000
   1000.50000     20.00000      2.20000
   1001.00000     31.00000      2.31000
   1001.50000   -999.25000      2.41000
   1002.00000     51.00000      2.51000
