// NOT RUN HERE. Wine's .NET does not run this example, so no test of this project does. The calls are those of the other
// hosts, which are tested. Windows PowerShell compiles this file too, as C# 5.
using System.Runtime.InteropServices;
using System.Xml;

namespace Krnqb.Example
{
    /// <summary>A plan file, as the component sees it: it calls OpenPlan and Data by name.</summary>
    [ComVisible(true)]
    public class Plan
    {
        private readonly XmlDocument document = new XmlDocument { PreserveWhitespace = true };

        public PlanTables Data
        {
            get { return new PlanTables(document); }
        }

        public bool OpenPlan(string file)
        {
            document.Load(file);
            return true;
        }

        /// <summary>Writes the plan to a file.</summary>
        public void Save(string file)
        {
            document.Save(file);
        }
    }

    /// <summary>The tables of a plan: the component reads them by id and returns the changed ones as one document.</summary>
    [ComVisible(true)]
    public class PlanTables
    {
        private const int SubscriptOutOfRange = unchecked((int)0x800A0009);  // run-time error 9
        private readonly XmlDocument document;

        internal PlanTables(XmlDocument document)
        {
            this.document = document;
        }

        // The names are those that the component calls, lower case included.
        public PlanTable tables(string id)
        {
            return new PlanTable(Find(id));
        }

        public void Deserialize(ref object text)
        {
            var changed = new XmlDocument { PreserveWhitespace = true };
            changed.LoadXml((string)text);
            foreach (XmlNode table in changed.SelectNodes("//tableitem"))
            {
                XmlNode own = Find(table.Attributes["id"].Value);
                ReplaceIn(own, table, "lastsavedid");
                ReplaceIn(own, table, "tableblocks");
            }
        }

        private XmlNode Find(string id)
        {
            XmlNode table = document.SelectSingleNode("/plan/tables/tableitem[@id='" + id + "']");
            if (table == null)
            {
                throw new COMException("The plan has no table " + id, SubscriptOutOfRange);
            }
            return table;
        }

        private void ReplaceIn(XmlNode table, XmlNode changed, string name)
        {
            XmlNode copy = document.ImportNode(changed.SelectSingleNode(name), deep: true);
            table.ReplaceChild(copy, table.SelectSingleNode(name));
        }
    }

    /// <summary>One table of the plan.</summary>
    [ComVisible(true)]
    public class PlanTable
    {
        private readonly XmlNode element;

        internal PlanTable(XmlNode element)
        {
            this.element = element;
        }

        public string Serialize()
        {
            return element.OuterXml;
        }
    }
}
