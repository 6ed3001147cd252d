~VERSION
 VERS.        2.00                                         :CWLS LOG ASCII STANDARD
 WRAP.        NO                                           :WRAP MODE
~WELL
 STRT.M       1000.00000                                                                                     :START
 STOP.M       1001.00000                                                                                     :STOP
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
 NPHI.V/V                                                  :NEUTRON
~PARAMETER
#MNEM.UNIT    VALUE                                        :DESCRIPTION
#----.----    ---------------                              :-------------------
  BHT.DEGC    85                                           :HOLE TEMPERATURE
~ASCII   DEPT           GR         RHOB         NPHI
   1000.00000     10.00000      2.10000      0.21000
   1000.50000     20.00000   -999.25000      0.22000
   1001.00000     30.00000      2.30000      0.23000
