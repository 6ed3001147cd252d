~Version Information
 VERS.        2.0 : CWLS LOG ASCII STANDARD - VERSION 2.0
 WRAP.         NO : One line per depth step
~Well Information
 STRT.F      328 : First depth
 STOP.F      333 : Last depth
 STEP.F      1 : Step
 NULL.    -999.25 : Null value
 WELL.    Heron 4 : Well
~Curve Information
 DEPT.F            : Depth
 GR.GAPI         : Channel GR
 RHOB.GAPI         : Channel RHOB
~Ascii
  328   10   20
  329   11   21
  330   12   22
  331   13   23
  332   14   24
  333   15   25
