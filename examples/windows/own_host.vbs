' A host of a script's own: the component runs on objects that are none of ours. What each class must
' answer stands in docs/com.md; names are matched without regard to case.
'
'   cscript //nologo own_host.vbs
Option Explicit

' Rows in memory: one column list, and an array of values for each row.
Class Rows
  Private names
  Private data
  Private place
  Public Sub Fill(columns, values)
    names = columns
    data = values
    place = 0
  End Sub
  Public Property Get AtEnd()
    AtEnd = place > UBound(data)
  End Property
  Public Property Get FieldCount()
    FieldCount = UBound(names) + 1
  End Property
  Public Function FieldName(index)
    FieldName = names(index)
  End Function
  Public Function Field(column)
    Dim i, row
    row = data(place)
    For i = 0 To UBound(names)
      If LCase(names(i)) = LCase(column) Then
        Field = row(i)
        Exit Function
      End If
    Next
    Err.Raise 3265, "Rows", "There is no column " & column
  End Function
  Public Sub MoveFirst()
    place = 0
  End Sub
  Public Sub MoveNext()
    place = place + 1
  End Sub
  Public Sub Close()
    place = UBound(data) + 1
  End Sub
End Class

Class OwnConnection
  Public Failures
  Public LastSql
  Public LastMode
  Public LastParameters
  Public Function OpenRecordset(sql, mode, opt, parameters, flag)
    LastSql = sql
    LastMode = mode
    LastParameters = Described(parameters)
    If Failures > 0 Then
      Failures = Failures - 1
      Err.Raise 1001, "OwnConnection", "The line to the database is busy"
    End If
    Dim opened
    Set opened = New Rows
    opened.Fill Array("CustBalance", "ExCustId"), Array(Array(CCur(125.5), 7), Array(CCur(-25.25), 8))
    Set OpenRecordset = opened
  End Function
  Private Function Described(parameters)
    Dim each_
    Described = TypeName(parameters)
    If IsArray(parameters) Then
      For Each each_ In parameters
        Described = Described & " " & TypeName(each_)
      Next
    End If
  End Function
  Public Property Get CommandTimeout()
    CommandTimeout = 30
  End Property
  Public Property Let CommandTimeout(seconds)
  End Property
End Class

Class OwnErrors
  Public Answer
  Public Reports
  Public LastReport
  Public Function ReportError(number, description, component, className, method, line)
    Reports = Reports + 1
    LastReport = number & " " & description & " in " & component & "." & className & "." & method & _
                 ", line " & (line > 0)
    If Answer = "raise" Then Err.Raise number, "OwnErrors", description & " (told by the script)"
    ReportError = Answer
  End Function
End Class

Class OwnUtility
  Public Function ParameterArray(values)
    Set ParameterArray = values
  End Function
  Public Function NullSafe(expression, defaultValue, flag)
    NullSafe = "COALESCE(" & expression & "," & defaultValue & ")"
  End Function
End Class

Class OwnServices
  Public Connection
  Public Property Get DefaultConnection()
    Set DefaultConnection = Connection
  End Property
  Public Property Get EngineType()
    EngineType = 0
  End Property
  Public Function GetParameter(name, key, table, value, conn, opt)
    value = "3100"
    GetParameter = "3100"
  End Function
End Class

Class OwnSettings
  Public Function GetSetting(number)
    GetSetting = (number = 133)
  End Function
End Class

' The foundation: the helper's first member gives its application object.
Class OwnFoundation
  Public Property Get Application()
    Set Application = Me
  End Property
  Public Property Get Settings()
    Set Settings = New OwnSettings
  End Property
End Class

Class OwnRegistry
  Public Function Find(name)
    If name = "castria-helper" Then
      Set Find = New OwnFoundation
    Else
      Set Find = Nothing
    End If
  End Function
End Class

Class OwnContext
  Public DataServices
  Public ErrorService
  Public Utility
  Public Property Get Registry()
    Set Registry = New OwnRegistry
  End Property
End Class

Class OwnApplication
  Public Inner
  Public Property Get Context()
    Set Context = Inner
  End Property
End Class

Dim connection, errors, application, host, queries, helper, rows
Set connection = New OwnConnection
Set errors = New OwnErrors
Set application = New OwnApplication
Set application.Inner = New OwnContext
Set application.Inner.ErrorService = errors
Set application.Inner.Utility = New OwnUtility
Set application.Inner.DataServices = New OwnServices
Set application.Inner.DataServices.Connection = connection

Set host = CreateObject("QuorAccQueries.CThreadHost")
Set host.Application = application

' The recordset that the script's connection opened comes back as the script's own object.
Set queries = CreateObject("QuorAccQueries.CCustomerQueries")
Set queries.CustomConnection = connection
Set rows = queries.OpenCustBalance(7, #6/30/2025#, 0, "")
WScript.Echo "rows: " & rows.Field("CustBalance")
WScript.Echo "connection: " & (queries.CustomConnection Is connection)
WScript.Echo "parameters: " & connection.LastParameters & ", mode " & connection.LastMode

' A single value out of the script's rows.
Set helper = CreateObject("QuorAccQueries.CCustomerHelper")
Set helper.CustomConnection = connection
WScript.Echo "balance: " & TypeName(helper.GetCustBalance(7, #6/30/2025#)) & " " & _
             helper.GetCustBalance(7, #6/30/2025#)
helper.CacheRecordsets = True
WScript.Echo "cache allowed: " & helper.CacheRecordsets

' What follows an error is the script's to say.
errors.Answer = 0
connection.Failures = 1
WScript.Echo "retry: " & helper.GetCustBalance(1, #6/30/2025#) & ", reports " & errors.Reports
WScript.Echo errors.LastReport
errors.Answer = 1
connection.Failures = 1
Set rows = queries.OpenCustBalance(2, #6/30/2025#, 0, "")
WScript.Echo "continue: " & (rows Is Nothing)
errors.Answer = 2
connection.Failures = 1
Set rows = queries.OpenCustBalance(2, #6/30/2025#, 0, "")
WScript.Echo "leave: " & (rows Is Nothing) & ", reports " & errors.Reports
errors.Answer = "raise"
connection.Failures = 1
On Error Resume Next
Set rows = queries.OpenCustBalance(2, #6/30/2025#, 0, "")
WScript.Echo "raise: " & Err.Number & " " & Err.Description & " from " & Err.Source
On Error GoTo 0

Set queries = Nothing
Set helper = Nothing
Set host.Application = Nothing
WScript.Echo "objects held: " & host.LiveObjects
