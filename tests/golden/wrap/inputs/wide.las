~Version Information
 VERS.        2.0 : CWLS LOG ASCII STANDARD - VERSION 2.0
 WRAP.         NO : One line per depth step
~Well Information
 STRT.M      100 : First depth
 STOP.M      106 : Last depth
 STEP.M      1 : Step
 NULL.    -999.25 : Null value
 WELL.    Heron 4 : Well
~Curve Information
 DEPT.M            : Depth
 C0.GAPI         : Channel C0
 C1.GAPI         : Channel C1
 C2.GAPI         : Channel C2
 C3.GAPI         : Channel C3
 C4.GAPI         : Channel C4
 C5.GAPI         : Channel C5
 C6.GAPI         : Channel C6
 C7.GAPI         : Channel C7
 C8.GAPI         : Channel C8
 C9.GAPI         : Channel C9
 C10.GAPI         : Channel C10
 C11.GAPI         : Channel C11
 C12.GAPI         : Channel C12
 C13.GAPI         : Channel C13
 C14.GAPI         : Channel C14
 C15.GAPI         : Channel C15
 C16.GAPI         : Channel C16
 C17.GAPI         : Channel C17
 C18.GAPI         : Channel C18
 C19.GAPI         : Channel C19
~Ascii
  100   10   20   30   40   50   60   70   80   90   100   110   120   130   140   150   160   170   180   190   200
  101   11   21   31   41   51   61   71   81   91   101   111   121   131   141   151   161   171   181   191   201
  102   12   22   32   42   52   62   72   82   92   102   112   122   132   142   152   162   172   182   192   202
  103   13   23   33   43   53   63   73   83   93   103   113   123   133   143   153   163   173   183   193   203
  104   14   24   34   44   54   64   74   84   94   104   114   124   134   144   154   164   174   184   194   204
  105   15   25   35   45   55   65   75   85   95   105   115   125   135   145   155   165   175   185   195   205
  106   16   26   36   46   56   66   76   86   96   106   116   126   136   146   156   166   176   186   196   206
