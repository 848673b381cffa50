' What a server gives to the script of a page, and the objects that it makes: each says what is done with it.

Class PageField
  Public Name
  Public Value
End Class

Function FieldOf(field_name, field_value)
  Set FieldOf = New PageField
  FieldOf.Name = field_name
  FieldOf.Value = field_value
End Function

' Two records of two fields.
Class ShownRecords
  Private at_record
  Public EOF
  Public Sub Open(sql, connection)
    WScript.Echo "open records: " & sql
    at_record = 1
    EOF = False
  End Sub
  Public Property Get Fields
    Fields = Array(FieldOf("name", "name" & at_record), FieldOf("town", "town" & at_record))
  End Property
  Public Sub MoveNext
    at_record = at_record + 1
    If at_record > 2 Then
      EOF = True
    End If
  End Sub
  Public Sub Close
    WScript.Echo "close records"
  End Sub
End Class

Class IdentityRecord
  Public Function Fields(field_name)
    Set Fields = FieldOf(field_name, 77)
  End Function
End Class

Class PageConnection
  Public Provider
  Public Sub Open(path)
    WScript.Echo "open " & Provider & ": " & path
  End Sub
  Public Function Execute(sql)
    WScript.Echo "execute: " & sql
    Set Execute = New IdentityRecord
  End Function
  ' A procedure has one number of arguments, so the call with two has a name of its own.
  Public Sub ExecuteCounting(sql, count)
    WScript.Echo "execute: " & sql
    count = 1
  End Sub
  Public Sub Close
    WScript.Echo "close"
  End Sub
End Class

Class Mail
  Public Subject
  Public From
  Public Receiver ' the member's real name is a word of the language
  Public Cc
  Public Body
  Public TextBody
  Public ReplyTo
  Public Property Let Value(header, text)
    If header = "Reply-To" Then
      ReplyTo = text
    End If
  End Property
  Public Sub Send
    WScript.Echo "mail from " & From & " reply " & ReplyTo & " to " & Receiver & " cc " & Cc
    WScript.Echo "subject " & Subject
    WScript.Echo Body & TextBody
  End Sub
End Class

Function CreateObject(kind)
  WScript.Echo "object " & kind
  Set CreateObject = New Mail
End Function

Class PageServer
  Public Function CreateObject(kind)
    If kind = "ADODB.Connection" Then
      Set CreateObject = New PageConnection
    Else
      Set CreateObject = New ShownRecords
    End If
  End Function
  Public Function HTMLEncode(text)
    HTMLEncode = text
  End Function
End Class

Class PageResponse
  Public Sub Write(text)
    WScript.Echo "write: " & text
  End Sub
End Class

Class PageRequest
  Public Function Form(field_name)
    Form = " <" & field_name & "'s ""x""> "
  End Function
  Public Function QueryString(field_name)
    QueryString = "query " & field_name
  End Function
  Public Function ServerVariables(field_name)
    ServerVariables = field_name
  End Function
End Class

Set Server = New PageServer
Set Response = New PageResponse
Set Request = New PageRequest
