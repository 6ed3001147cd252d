~Version Information
 VERS.        2.0 : CWLS LOG ASCII STANDARD - VERSION 2.0
 WRAP.         NO : One line per depth step
~Well Information
 STRT.M      103 : First depth
 STOP.M      111 : Last depth
 STEP.M      1 : Step
 NULL.    -999.25 : Null value
 WELL.    Heron 4 : Well
~Curve Information
 DEPT.M            : Depth
 GR.GAPI         : Channel GR
 RHOB.GAPI         : Channel RHOB
~Ascii
  103   10   20
  104   11   21
  105   12   22
  106   13   23
  107   14   24
  108   15   25
  109   16   26
  110   17   27
  111   18   28
