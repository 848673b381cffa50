<html><head><title>Order Seeds</title></head>
<body>
<table cellspacing=0 cellpadding=0 border=0><tr><FORM name="selectone"><td><SELECT onChange="window.open(this.options[this.selectedIndex].value,'_top')">
<option value="index.htm">Green Thumb
<option value="herbs.htm">Herb Beds
<option value="spades.htm">Spade Shed
<option value="order.asp" selected>Order Seeds
</SELECT></td></FORM></tr></table>
<ul>
<li> <a href="index.htm">Green Thumb</a>
<li> <a href="herbs.htm">Herb Beds</a>
<li> <a href="spades.htm">Spade Shed</a>
</ul>
<p><a href="index.htm">Start</a> <a href="herbs.htm">Herbs</a> <b>Order</b></p>
<p><a href="plots/herbs.htm">Beds</a> <a href="spades.htm">Shed</a> <a href="pond.htm">Pond</a></p>
<!--BODY HERE-->

<%
Set conn = Server.CreateObject("ADODB.Connection")
conn.Provider = "Microsoft.Jet.OLEDB.4.0"
conn.Open "data/garden.mdb"
%>
<%
Set conn = Server.CreateObject("ADODB.Connection")
conn.Provider = "Microsoft.Jet.OLEDB.4.0"
conn.Open "data/garden.mdb"
set rs=Server.CreateObject("ADODB.recordset")
sql="SELECT * from Seeds;"
rs.Open sql, conn
%>
<table style="font:7pt verdana" border=1>
<tr><%for each x in rs.Fields%><th><%=x.name%></th><%next%></tr>
<%do until rs.EOF%>
<tr>
<%for each x in rs.Fields%>
<td><%Response.Write(x.value)%></td>
    <%next
    rs.MoveNext%>
    </tr>
  <%loop
  rs.close
  conn.close%>
</table>
<%
name=trim(Request.Form("name"))
email=trim(Request.Form("email"))

email = replace(email, " ", "")

safename = RTESafe(name)
safeemail = RTESafe(email)

messageout="************************" + vbCrLf
messageout=messageout + "name: " + name + vbcrlf
messageout=messageout + "email: " + email + vbcrlf

if name="" and email=""  then imempty="yes"

function RTESafe(strText)
    'returns safe code for outputting to the browser
    dim tmpString
    tmpString = trim(strText)
    'convert single quotes
    tmpString = replace(tmpString, chr(145), chr(39))
    tmpString = replace(tmpString, chr(146), chr(39))
    tmpString = replace(tmpString, "'", "&#39;")
    'convert double quotes
    tmpString = replace(tmpString, chr(34), "&quot;")
    tmpString = replace(tmpString, chr(147), "&quot;")
    tmpString = replace(tmpString, chr(148), "&quot;")
    'replace less-thans and greater-thans
    tmpString = replace(tmpString, "<", "&lt;")
    tmpString = replace(tmpString, ">", "&gt;")
    RTESafe = tmpString
end function

%>
<%
name=Replace(name, """", "&quot;")
name=Replace(name, "'", "''")
note=Replace(note, """", "&quot;")
note=Replace(note, "'", "''")

%>
<%
sql = "INSERT INTO [Orders] ([name],[count]) VALUES(" & "'" & name & "'," & count & ")"
conn.Execute sql,recaffected
sql = "SELECT @@IDENTITY AS NewID"
Set loRs = conn.Execute(sql)
hotID = loRs.Fields("NewID").value
conn.Close
%>
<%
sql = "UPDATE [Orders] SET [name]='" & name & "',[count]=" & count & " WHERE [ID]=" & ID
conn.Execute sql
conn.Close
%>
<%
sql = "DELETE FROM Orders WHERE ID='ID'"
conn.Execute sql
%>
<%
Set myMail=CreateObject("Cdonts.newMail")
myMail.Subject=spam & "Seed order"
myMail.From="webmaster@example.com"
if instr(email,"@")>0 and instr(email, " ")=0 then myMail.value("Reply-To")=email
myMail.To="orders@garden.example.com"
myMail.cc="shed@garden.example.com"
myMail.Body=messageout
myMail.Send
Set myMail = Nothing
%>
<%
Set myMail=CreateObject("CDO.Message")
myMail.Subject=spam & "Thank ""you"""
myMail.From="club@garden.example.com"
myMail.To=email
myMail.TextBody="Thanks for your order"
myMail.Send
Set myMail = Nothing
%>
</body></html>
