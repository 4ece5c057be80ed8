' Each class as a script sees it: how many instances there are, in an enumeration and in a query; all by their paths; the
' first one value by value; and the same one got by its path.
'
'     cscript objects.vbs NAMESPACE CLASS...
'
' cscript ends with 0 also after an error: what matters is the last line.
Option Explicit
Dim service, index
Set service = GetObject("winmgmts:\\.\" & WScript.Arguments(0))
For index = 1 To WScript.Arguments.Count - 1
    ShowClass WScript.Arguments(index)
Next
WScript.Echo "done"

Sub ShowClass(name)
    Dim found, queried, object, first, path
    Set found = service.InstancesOf(name)
    Set queried = service.ExecQuery("SELECT * FROM " & name, "WQL", &H30)
    WScript.Echo "-- " & name & ": " & found.Count & " instances, " & queried.Count & " by query"
    For Each object In found
        path = object.Properties_.Item("__RELPATH").Value
        WScript.Echo path
        If IsEmpty(first) Then Set first = object
    Next
    If IsEmpty(first) Then Exit Sub
    ShowValues first
    path = first.Properties_.Item("__RELPATH").Value
    ShowSame first, path
End Sub

Sub ShowSame(first, path)
    Dim again
    On Error Resume Next
    Set again = service.Get(path)
    If Err.Number <> 0 Then
        WScript.Echo "it is not got by its path: 0x" & Hex(Err.Number)
    ElseIf again.GetObjectText_ <> first.GetObjectText_ Then
        WScript.Echo "the object got by its path is another:" & vbCrLf & again.GetObjectText_
    End If
End Sub

' The names are those of the object's text; the values are asked for by name.
Sub ShowValues(object)
    Dim line, name, text, value
    For Each line In Split(Replace(object.GetObjectText_, vbCr, ""), vbLf)
        If InStr(line, " = ") > 0 Then
            name = Trim(Replace(Left(line, InStr(line, " = ") - 1), vbTab, ""))
            text = Mid(line, InStr(line, " = ") + 3)
            value = object.Properties_.Item(name).Value
            If IsNull(value) Then
                WScript.Echo "    " & name & ": null"
            ElseIf IsArray(value) Then
                ' The script engine does not look into arrays of other things than variants: their text tells.
                WScript.Echo "    " & name & ": array of type " & (VarType(value) And Not vbArray) & " " & text
            Else
                WScript.Echo "    " & name & ": " & TypeName(value) & " " & value
            End If
        End If
    Next
End Sub
