' Whether the library's objects can be created.
Dim sequence
Set sequence = CreateObject("QXControls.KeySequence")
sequence.AddByte 30
If sequence.KeyString = " 30" Then Host.Quit 0
