~Version Information
 VERS.        2.0 : CWLS LOG ASCII STANDARD - VERSION 2.0
 WRAP.         NO : One line per depth step
~Well Information
 STRT.M      100 : First depth
 STOP.M      104 : Last depth
 STEP.M      1 : Step
 NULL.    -999.25 : Null value
 WELL.    Heron 4 : Well
~Curve Information
 DEPT.M            : Depth
 GR.GAPI         : Channel GR
 RHOB.GAPI         : Channel RHOB
~Ascii
  100   10   20
  101   11   21
  102   12   22
  103   13   23
  104   14   24
