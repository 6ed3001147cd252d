~Version Information
 VERS.        2.0 : CWLS LOG ASCII STANDARD - VERSION 2.0
 WRAP.         NO : One line per depth step
~Well Information
 STRT.M      200 : First depth
 STOP.M      206 : Last depth
 STEP.M      1 : Step
 NULL.    -999.25 : Null value
 WELL.    Heron 4 : Well
~Curve Information
 DEPT.M            : Depth
 GR.GAPI         : Channel GR
~Ascii
  200   10
  201   11
  202   12
  203   13
  204   14
  205   15
  206   16
