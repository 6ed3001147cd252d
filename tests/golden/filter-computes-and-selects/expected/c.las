~VERSION
 VERS.        2.00                                         :CWLS LOG ASCII STANDARD
 WRAP.        NO                                           :WRAP MODE
~WELL

 STRT.M       1000.000                                                                                       :START
 STOP.M       1001.500                                                                                       :STOP
 STEP.M       0.50000                                                                                        :STEP
 NULL.        -999.25000                                                                                     :NULL
 COMP.        NORTH RIDGE                                                                                    :COMPANY
~CURVE
#MNEM.UNIT    VALUE                                        :DESCRIPTION
#----.----    ---------------                              :-------------------
 DEPT.M       00 001 00 00                                 :Depth Index
 DPHI.V/V                                                  :DENSITY POROSITY
GAMMA.GAPI    30 310                                       :NATURAL GAMMA
~Parameter Information
#MNEM.UNIT    VALUE                                        :DESCRIPTION
#----.----    ---------------                              :-------------------
 RUN1.        1                                            :Run Identification mnemonic for Run #1
 RUNS.        1                                            :Number of runs available
  BHT.DEGC    85                                           :HOLE TEMPERATURE
~ASCII DEPT       DPHI      GAMMA
   1000.000      0.333     10.000
   1000.500      0.273     20.000
   1001.000   -999.250     30.000
   1001.500      0.152     40.000
