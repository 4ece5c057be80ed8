' Every method of every class, with what a script puts in and what it reads back, messages included.
'
' cscript ends with 0 also after an error: what matters is the last line.
Option Explicit
Dim service, hba, setting, choice, parameters, results, portName
Set service = GetObject("winmgmts:{impersonationLevel=impersonate}!\\.\root\KESTA")
Set hba = service.Get("Zarn_FCOEHBA.DeviceID=""eth0.1002""")

WScript.Echo "-- Zarn_FCOEHBA"
Set results = hba.ExecMethod_("GenerateVirtualPortWWPN")
Show "GenerateVirtualPortWWPN", results
portName = results.WorldWidePortName
Set parameters = hba.Methods_("CreateVirtualPort").InParameters
parameters.WorldWidePortName = portName
Set results = hba.ExecMethod_("CreateVirtualPort", parameters)
Show "CreateVirtualPort", results
WScript.Echo "the port: " & service.Get(results.PortPath).WorldWidePortName
Show "CreateVirtualPort again", hba.ExecMethod_("CreateVirtualPort", parameters)
Set parameters = hba.Methods_("DeleteVirtualPort").InParameters
parameters.WorldWidePortName = portName
Show "DeleteVirtualPort", hba.ExecMethod_("DeleteVirtualPort", parameters)
Gone results.PortPath
Show "RefreshTargets", service.ExecMethod("Zarn_FCOEHBA.DeviceID=""eth0.1002""", "RefreshTargets")
Show "Uninstall", service.Get("Zarn_FCOEHBA").ExecMethod_("Uninstall")

WScript.Echo "-- Zarn_FCOESettingInt"
Set setting = service.Get("Zarn_FCOESettingInt.Caption=""DevLossTimeout"",ParentId=""eth0.1002"",ParentType=""NIC""")
Change setting, "DevLossTimeout to 99999", "99999", "99999", 1
Change setting, "DevLossTimeout to 30, only asked", "30", "30", 0
Change setting, "DevLossTimeout to 30", "30", "30", 1
Show "SetDefault", setting.ExecMethod_("SetDefault")
WScript.Echo "CurrentValue: " & Again(setting).CurrentValue

WScript.Echo "-- Zarn_FCOESettingEnum"
Set choice = service.Get("Zarn_FCOESettingEnum.Caption=""ControllerMode"",ParentId=""eth0.1002"",ParentType=""NIC""")
Change choice, "ControllerMode to 7", "7", "Fabric", 1
Change choice, "ControllerMode to 2", "2", "Fabric", 1
Show "SetDefault", choice.ExecMethod_("SetDefault")
WScript.Echo "CurrentValue: " & Again(choice).CurrentValue

WScript.Echo "-- no such method"
On Error Resume Next
hba.ExecMethod_ "Explode"
WScript.Echo "0x" & Hex(Err.Number)
WScript.Echo "done"

Sub Show(what, answer)
    WScript.Echo what & ": ReturnValue " & answer.ReturnValue & ", as text:"
    WScript.Echo answer.GetObjectText_
End Sub

Sub Change(object, what, value, text, take)
    Dim into
    Set into = object.Methods_("ValidateAndSetSetting").InParameters
    into.CurrentValue = value
    into.RegistryValue = value
    into.DisplayValue = text
    into.SetValuesOnNoError = take
    Show what, object.ExecMethod_("ValidateAndSetSetting", into)
    WScript.Echo "CurrentValue: " & Again(object).CurrentValue
End Sub

Function Again(object)
    Set Again = service.Get(object.Properties_.Item("__RELPATH").Value)
End Function

Sub Gone(path)
    On Error Resume Next
    service.Get path
    WScript.Echo "the port afterwards: 0x" & Hex(Err.Number)
End Sub
