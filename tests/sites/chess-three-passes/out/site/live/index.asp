<html><head><title>Kingside Chess Club</title></head>
<body>
<p>Live edition</p>
<p>Join us online!</p>
<h1>Kingside Chess Club</h1>
<!--BODY HERE-->
<p>We meet Mondays at 7 in the café.</p>

<p>It is <%=time%> now.</p>
<ul>
<li>Members: 42
</ul>

<p>Next: <a href="Games/Final.htm">The Final</a></p>
<p>live\index, index, index.asp, *.asp</p>
</body></html>
