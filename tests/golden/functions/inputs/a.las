~Version Information
 VERS.        2.0 : CWLS LOG ASCII STANDARD - VERSION 2.0
 WRAP.         NO : One line per depth step
~Well Information
 STRT.M      100 : First depth
 STOP.M      102 : Last depth
 STEP.M      1 : Step
 NULL.    -999.25 : Null value
 WELL.    Heron 4 : Well
~Curve Information
 DEPT.M            : Depth
 ILD.GAPI         : Channel ILD
 CILD.GAPI         : Channel CILD
 RHOB.GAPI         : Channel RHOB
 DPHI.GAPI         : Channel DPHI
 DT.GAPI         : Channel DT
 SPHI.GAPI         : Channel SPHI
 TNPH.GAPI         : Channel TNPH
 NPHI.GAPI         : Channel NPHI
 NEUT.GAPI         : Channel NEUT
 GR.GAPI         : Channel GR
 TRACK.GAPI         : Channel TRACK
~Ascii
  100   10   20   30   40   50   60   70   80   90   100   110
  101   11   21   31   41   51   61   71   81   91   101   111
  102   12   22   32   42   52   62   72   82   92   102   112
