' How a script walks from object to object: associators and references of an adapter, by class and in the other direction,
' and every association from its one end to its other by the references that it holds.
'
'     cscript walk.vbs PATH ASSOCIATION...
'
' cscript ends with 0 also after an error: what matters is the last line.
Option Explicit
Dim service, path, index
Set service = GetObject("winmgmts:root\KESTA")
path = WScript.Arguments(0)

WScript.Echo "-- associators"
Show "ASSOCIATORS OF {" & path & "}"
WScript.Echo "-- associated fabrics"
Show "ASSOCIATORS OF {" & path & "} WHERE ResultClass = Zarn_FCoEFabric"
WScript.Echo "-- over the VLANs"
Show "ASSOCIATORS OF {" & path & "} WHERE AssocClass = Zarn_FCoE_HBA_VLAN_Assoc ResultRole = Dependent"
WScript.Echo "-- references to the fabrics"
Show "REFERENCES OF {" & path & "} WHERE ResultClass = Zarn_FCoE_HBA_Fabric_Assoc"
For index = 1 To WScript.Arguments.Count - 1
    ShowEnds WScript.Arguments(index)
Next
WScript.Echo "-- back from a VLAN"
Show "ASSOCIATORS OF {Zarn_FCoEVLAN.DeviceID=""eth1.1002"",VlanID=1002}"
WScript.Echo "done"

Sub Show(query)
    Dim found, object
    Set found = service.ExecQuery(query)
    WScript.Echo found.Count & " objects"
    For Each object In found
        WScript.Echo object.Properties_.Item("__RELPATH").Value
    Next
End Sub

' The two ends of the first link, got by what it says about them.
Sub ShowEnds(name)
    Dim link, line
    WScript.Echo "-- the ends of " & name
    Set link = service.InstancesOf(name).ItemIndex(0)
    For Each line In Split(Replace(link.GetObjectText_, vbCr, ""), vbLf)
        If InStr(line, " = ") > 0 Then
            ShowEnd link, Trim(Replace(Left(line, InStr(line, " = ") - 1), vbTab, ""))
        End If
    Next
End Sub

Sub ShowEnd(link, role)
    Dim object
    On Error Resume Next
    Set object = service.Get(link.Properties_.Item(role).Value)
    If Err.Number <> 0 Then
        WScript.Echo role & ": 0x" & Hex(Err.Number) & " for " & link.Properties_.Item(role).Value
    Else
        WScript.Echo role & ": " & object.Properties_.Item("__CLASS").Value & " " & object.Properties_.Item("__RELPATH").Value
    End If
End Sub
